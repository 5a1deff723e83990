// Whether a document kept the units of the object that it was made from.
#pragma once

#include "embedded/spatial_reference/document.h"
#include "embedded/spatial_reference/proj_context.h"

namespace Embedded {

/// Compares kind, name and factor of every unit, in order: PROJ takes units of one name for equal when it writes
/// PROJJSON, so that a document can come to hold another unit. True for an object that cannot be written as WKT 2,
/// which tells the units.
bool keepsUnits(const PJ* object, const Document& document);

} // namespace Embedded
