#include "frame_test.h"
#include "support/allocations/counted_allocations.h"

namespace Tests {
namespace {

using UnloadMemory = FrameTest;

TEST_F(UnloadMemory, IsGivenBackByUnloading)
{
    ASSERT_EQ(Orvel::moduleApplication().load(), Qeapp::eOk); // the host's own list has its room from here on
    ASSERT_EQ(Orvel::moduleApplication().unload(), Qeapp::eOk);
    const long before = allocatedBlocks();
    ASSERT_EQ(Orvel::moduleApplication().load(), Qeapp::eOk);
    EXPECT_GT(allocatedBlocks(), before);
    ASSERT_EQ(Orvel::moduleApplication().unload(), Qeapp::eOk);
    EXPECT_EQ(allocatedBlocks(), before);
}

} // namespace
} // namespace Tests
