// The canonical document: what a definition is, as PROJJSON without usage metadata, ensembles or anything that would
// need the catalog again. Every other answer about a definition is derived from its document and its code.
#pragma once

#include <nlohmann/json.hpp>

#include <string>
#include <string_view>

namespace Embedded {

using Projjson = nlohmann::ordered_json;

/// The member, or null when the node is no object or has none.
const Projjson* memberOf(const Projjson& node, const char* key);
/// The member's text, or nothing in it when it is absent or no text.
std::string_view textOf(const Projjson& node, const char* key);

/// The system's type; a base system need not say that it is geographic.
std::string_view systemTypeOf(const Projjson& system);
/// The component, source or base system that the system is made of and that decides its horizontal part; null when the
/// system stands alone.
const Projjson* underlyingSystem(const Projjson& system);

/// One of CoordinateReferenceSystemKind, or 0 for what is no system of this library (a vertical one, for instance).
int kindOf(const Projjson& system);

/// The innermost system, which holds the datum.
const Projjson& geodeticNode(const Projjson& system);
Projjson& geodeticNode(Projjson& system);

/// AUTHORITY:CODE of the node's identifier; the node's name when it has none.
std::string codeOf(const Projjson& node);
/// Identifier or not.
bool hasIdentifier(const Projjson& node);
/// A bound system has the name of its source.
std::string nameOf(const Projjson& node);

/// Whether the datum stands for "an ellipsoid, and nothing known beyond": such a system counts as without datum.
bool isUnspecifiedDatum(const Projjson& datum);

double semiMajorAxisInMetres(const Projjson& ellipsoid);
/// 0 for a sphere.
double inverseFlattening(const Projjson& ellipsoid);

} // namespace Embedded
