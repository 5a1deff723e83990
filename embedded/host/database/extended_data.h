// An object's extended data as values, for those who show or save it.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "embedded/host/database/object.h"

namespace QeHost {

/// By live application, in name order.
std::vector<std::pair<std::wstring, Embedded::ResbufValues>> extendedDataByName(const QeDbObject& object);

} // namespace QeHost
