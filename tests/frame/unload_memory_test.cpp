#include "frame_test.h"
#include "support/allocations/counted_allocations.h"

namespace Tests {
namespace {

using UnloadMemory = FrameTest;

TEST_F(UnloadMemory, IsGivenBackByUnloading)
{
    ASSERT_EQ(orvelApplication().load(), Qeapp::eOk); // the host's own list has its room from here on
    ASSERT_EQ(orvelApplication().unload(), Qeapp::eOk);
    const long before = allocatedBlocks();
    ASSERT_EQ(orvelApplication().load(), Qeapp::eOk);
    EXPECT_GT(allocatedBlocks(), before);
    ASSERT_EQ(orvelApplication().unload(), Qeapp::eOk);
    EXPECT_EQ(allocatedBlocks(), before);
}

} // namespace
} // namespace Tests
