#include "sweep/allocations.h"

namespace Tests {

// Each library has a `new` of its own there, and this program's serves nothing but the module, which is linked into it.
Allocator allocatorAt(const void* /*caller*/)
{
    return Allocator::module;
}

} // namespace Tests
