// Whether a document from outside has what the queries rely on.
#pragma once

#include "embedded/spatial_reference/projjson/definition_data.h"
#include "embedded/spatial_reference/projjson/projjson.h"

namespace Embedded {

/// Documents nest less than this; the deepest of the catalog has eight levels. It leaves a text frame room within
/// kDeepestJson.
inline constexpr int kDeepestDocument = 24;

/// A system of a known kind, a datum or an ellipsoid, with the parts that the queries look for.
bool isSoundDocument(DefinitionType type, const Projjson& document);

/// Sound, and PROJ agrees: what passes can be queried and converted.
bool isValidDocument(DefinitionType type, const Projjson& document);

} // namespace Embedded
