// Checks whether the units of a definition can be stored.
#pragma once

#include "embedded/base/error.h"
#include "embedded/spatial_reference/projjson/proj_context.h"
#include "embedded/spatial_reference/projjson/projjson.h"

namespace Embedded {

/// Refuses a definition with a unit whose factor is not above 0, and PROJJSON that has another unit than the object
/// from which it was made. Compares kind, name and factor of every unit, in order: PROJ takes units of one name for
/// equal when it writes PROJJSON. Accepts an object that PROJ cannot write as WKT 2, from which the units are read.
/// The Error has statusUnreadable.
Expected<void> checkUnits(const PJ* object, const Projjson& projjson);

} // namespace Embedded
