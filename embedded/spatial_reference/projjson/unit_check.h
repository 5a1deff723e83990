// Whether the units of a definition can be stored.
#pragma once

#include <optional>
#include <string>

#include "embedded/spatial_reference/projjson/proj_context.h"
#include "embedded/spatial_reference/projjson/projjson.h"

namespace Embedded {

/// Why a document that was made from the object is not to be stored, for a person: a unit has a factor that is not
/// above 0, or the document holds another unit. Kind, name and factor of every unit are compared, in order, since PROJ
/// takes units of one name for equal when it writes PROJJSON. Nothing for an object that cannot be written as WKT 2,
/// which tells the units.
std::optional<std::string> faultOfUnits(const PJ* object, const Projjson& document);

} // namespace Embedded
