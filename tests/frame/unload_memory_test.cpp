#include "frame_test.h"
#include "support/allocations/counted_allocations.h"

namespace Tests {
namespace {

using UnloadMemory = FrameTest;

TEST_F(UnloadMemory, UnloadingReleasesAllMemory)
{
    ASSERT_EQ(Orvel::moduleApplication().load(), Qeapp::eOk); // now the host's list has its capacity
    ASSERT_EQ(Orvel::moduleApplication().unload(), Qeapp::eOk);
    const long before = allocatedBlocks();
    ASSERT_EQ(Orvel::moduleApplication().load(), Qeapp::eOk);
    EXPECT_GT(allocatedBlocks(), before);
    ASSERT_EQ(Orvel::moduleApplication().unload(), Qeapp::eOk);
    EXPECT_EQ(allocatedBlocks(), before);
}

} // namespace
} // namespace Tests
