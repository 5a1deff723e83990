// An object's extended data as values.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "embedded/host/database/object.h"

namespace QeHost {

/// The values of each live application, in the order of the names.
std::vector<std::pair<std::wstring, Embedded::ResbufValues>> extendedDataByName(const QeDbObject& object);

} // namespace QeHost
