// The PROJJSON of a definition, in a canonical form: without usage metadata and ensembles, and complete without the
// catalog. Everything else about a definition is derived from its PROJJSON and its code.
#pragma once

#include <nlohmann/json.hpp>

#include <optional>
#include <string>
#include <string_view>

#include "platform/spatial_reference/definition.h"

namespace Embedded {

using Projjson = nlohmann::ordered_json;

/// Definitions that are nested more deeply are refused.
inline constexpr int kDeepestJson = 32;

/// The member; null when the node is not an object or does not have it.
const Projjson* memberOf(const Projjson& node, const char* key);
/// The member's text; empty when the node does not have the member or it is not a text.
std::string_view textOf(const Projjson& node, const char* key);

/// The system's type. A base system without a type is geographic.
std::string_view systemType(const Projjson& system);
/// The component, source or base system that has the system's horizontal part; null when the system stands alone.
const Projjson* underlyingSystem(const Projjson& system);

/// Nothing for a system that this library does not have, such as a vertical one.
std::optional<Zentara::Infrastructure::SpatialReference::CoordinateReferenceSystemKind>
systemKind(const Projjson& system);

/// The innermost system, which has the datum.
const Projjson& geodeticSystem(const Projjson& system);
Projjson& geodeticSystem(Projjson& system);

/// AUTHORITY:CODE of the node's identifier; the node's name when it has none.
std::string codeOf(const Projjson& node);
bool hasIdentifier(const Projjson& node);
/// The node's name. A bound system has the name of its source.
std::string nameOf(const Projjson& node);

/// Returns whether the datum only stands for its ellipsoid. A system with such a datum counts as one without a datum.
bool isUnspecifiedDatum(const Projjson& datum);

double semiMajorAxisInMetres(const Projjson& ellipsoid);
/// 0 for a sphere.
double inverseFlattening(const Projjson& ellipsoid);

} // namespace Embedded
