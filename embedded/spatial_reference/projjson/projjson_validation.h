// Checks whether PROJJSON from outside has what the queries rely on.
#pragma once

#include "embedded/spatial_reference/projjson/definition_data.h"
#include "embedded/spatial_reference/projjson/projjson.h"

namespace Embedded {

/// The levels of PROJJSON are fewer than this. The deepest of the catalog has eight. The difference to kDeepestJson is
/// for the frame of a definition text.
inline constexpr int kDeepestProjjson = 24;

/// Returns whether the PROJJSON is a system of a known kind, a datum or an ellipsoid with the parts that the queries
/// read.
bool hasRequiredParts(DefinitionType type, const Projjson& projjson);

/// Returns whether the PROJJSON has the required parts and PROJ makes an object of the type from it, so that it can be
/// queried and converted.
bool isValidProjjson(DefinitionType type, const Projjson& projjson);

} // namespace Embedded
