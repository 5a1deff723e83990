// PROJ's own list of the operations between two systems.
#pragma once

#include <vector>

#include "embedded/spatial_reference/projjson/proj_context.h"

namespace Embedded {

enum class OperationSearch {
    directOnly, // nothing by way of a third system, nothing that takes datums for equal, whatever the area
    everything // what PROJ chooses from if it has all grids: for the systems' common area, and by way of a third system
               // where nothing is direct
};

/// Best first as PROJ sees it, those whose grids are installed before those whose are not.
std::vector<ProjObject> searchOperations(const PJ* source, const PJ* target, OperationSearch search);

} // namespace Embedded
