// That unloading gives the decomposition reactor's memory back. The program's own allocation functions stand here and
// count the blocks that are held.
#include <cstdlib>
#include <new>

#include "frame_test.h"

namespace {

long blocksHeld = 0;

} // namespace

void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept
{
    void* const memory = std::malloc(size == 0 ? 1 : size);
    if (memory != nullptr)
        ++blocksHeld;
    return memory;
}

void* operator new(std::size_t size)
{
    void* const memory = operator new(size, std::nothrow);
    if (memory == nullptr)
        throw std::bad_alloc();
    return memory;
}

void operator delete(void* memory) noexcept
{
    if (memory != nullptr)
        --blocksHeld;
    std::free(memory);
}

void operator delete(void* memory, const std::nothrow_t& /*tag*/) noexcept
{
    operator delete(memory);
}

void operator delete(void* memory, std::size_t /*size*/) noexcept
{
    operator delete(memory);
}

namespace Tests {
namespace {

using UnloadMemory = FrameTest;

TEST_F(UnloadMemory, IsGivenBackByUnloading)
{
    ASSERT_EQ(orvelApplication().load(), Qeapp::eOk); // the host's own list has its room from here on
    ASSERT_EQ(orvelApplication().unload(), Qeapp::eOk);
    const long before = blocksHeld;
    ASSERT_EQ(orvelApplication().load(), Qeapp::eOk);
    EXPECT_GT(blocksHeld, before);
    ASSERT_EQ(orvelApplication().unload(), Qeapp::eOk);
    EXPECT_EQ(blocksHeld, before);
}

} // namespace
} // namespace Tests
