#include "sweep/allocations.h"

namespace Tests {

// On Windows each library has its own `new`. The one of this program serves only the module, which is linked into it.
Allocator allocatorAt(const void* /*caller*/)
{
    return Allocator::module;
}

} // namespace Tests
