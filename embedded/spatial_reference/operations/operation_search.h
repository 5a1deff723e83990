// PROJ's own list of the operations between two systems.
#pragma once

#include <vector>

#include "embedded/spatial_reference/projjson/proj_context.h"

namespace Embedded {

enum class OperationSearch {
    directOnly, // for any area; without operations through a third system and without ballpark ones
    everything  // what PROJ chooses from if it has all grids: for the common area of the systems, and through a third
                // system if there is no direct operation
};

/// The best come first, in PROJ's view. Operations whose grids are installed precede the others. Throws ErrorException
/// when the catalog cannot be read.
std::vector<ProjObject> searchOperations(const PJ* source, const PJ* target, OperationSearch search);

} // namespace Embedded
