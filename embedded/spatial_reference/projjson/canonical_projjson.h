// Canonical PROJJSON from PROJ's objects, and back.
#pragma once

#include "embedded/spatial_reference/projjson/proj_context.h"
#include "embedded/spatial_reference/projjson/projjson.h"

namespace Embedded {

/// The PROJJSON of a coordinate reference system, a datum or an ellipsoid. It says as much as the object: PROJ's own
/// PROJJSON leaves out what its database has, such as identifiers below an object that has one.
Projjson canonicalProjjson(const PJ* object);

/// PROJ's object of the PROJJSON; null when PROJ cannot make one.
ProjObject projObjectFrom(const Projjson& projjson);

} // namespace Embedded
