// What the reactor list does with memory. The program's own allocation functions stand here, so that the next
// allocation can be made to fail and what is held can be counted.
#include <cstdlib>
#include <memory>
#include <new>

#include "coordsys/reactor_notices.h"
#include "support/coordsys_test.h"

namespace {

bool nextAllocationFails = false;
long blocksHeld = 0;

void* allocate(std::size_t size)
{
    if (nextAllocationFails) {
        nextAllocationFails = false;
        throw std::bad_alloc();
    }
    void* const memory = std::malloc(size == 0 ? 1 : size);
    if (memory == nullptr)
        throw std::bad_alloc();
    ++blocksHeld;
    return memory;
}

void release(void* memory) noexcept
{
    if (memory != nullptr)
        --blocksHeld;
    std::free(memory);
}

} // namespace

void* operator new(std::size_t size)
{
    return allocate(size);
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    try {
        return allocate(size);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

void operator delete(void* memory) noexcept
{
    release(memory);
}

void operator delete(void* memory, const std::nothrow_t&) noexcept
{
    release(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    release(memory);
}

namespace {

using namespace Tests;

/// The next allocation fails, if there is one before the end of the scope.
class ScopedShortage {
public:
    ScopedShortage() { nextAllocationFails = true; }
    ~ScopedShortage() { nextAllocationFails = false; }
    ScopedShortage(const ScopedShortage&) = delete;
    ScopedShortage& operator=(const ScopedShortage&) = delete;
};

class ReactorMemory : public CoordsysTest {
protected:
    std::vector<std::unique_ptr<RecordingReactor>> reactors;

    void addReactor(const char* name = "A")
    {
        reactors.push_back(std::make_unique<RecordingReactor>(log, name));
        ASSERT_EQ(reactors.back()->add(), Qeapp::eOk);
    }
    /// Adds a third reactor while there is no memory.
    Qeapp::ErrorStatus addThirdWithoutMemory()
    {
        addReactor("A");
        addReactor("B");
        reactors.push_back(std::make_unique<RecordingReactor>(log, "C"));
        const ScopedShortage shortage;
        return reactors.back()->add();
    }
};

TEST_F(ReactorMemory, WithoutMemoryAReactorIsRefused)
{
    EXPECT_EQ(addThirdWithoutMemory(), Qeapp::eOutOfMemory);
}

TEST_F(ReactorMemory, WithoutMemoryTheListIsUnchanged)
{
    ASSERT_EQ(addThirdWithoutMemory(), Qeapp::eOutOfMemory);
    Cs::NotifyCsTransformationChanged();
    ASSERT_EQ(log.size(), 2U);
    EXPECT_EQ(log[0].reactor, "A");
    EXPECT_EQ(log[1].reactor, "B");
}

TEST_F(ReactorMemory, ARefusedReactorCanBeAddedOnceThereIsMemory)
{
    ASSERT_EQ(addThirdWithoutMemory(), Qeapp::eOutOfMemory);
    EXPECT_EQ(reactors.back()->remove(), Qeapp::eInvalidInput);
    EXPECT_EQ(reactors.back()->add(), Qeapp::eOk);
}

TEST_F(ReactorMemory, WithoutMemoryForTheSnapshotNoReactorIsCalled)
{
    addReactor();
    {
        const ScopedShortage shortage;
        EXPECT_THROW(Cs::NotifyCsTransformationChanged(), std::bad_alloc);
    }
    EXPECT_EQ(log, Notices());
}

TEST_F(ReactorMemory, ANoticeHoldsNothingAfterwards)
{
    addReactor();
    log.reserve(8);
    const long before = blocksHeld;
    Cs::NotifyCsTransformationChanged();
    EXPECT_EQ(blocksHeld, before);
}

TEST_F(ReactorMemory, AThrowingReactorLeavesNoSnapshotBehind)
{
    addReactor();
    log.reserve(8);
    reactors.back()->action = [](const Notice&) { throw 1; };
    const long before = blocksHeld;
    EXPECT_THROW(Cs::NotifyCsTransformationChanged(), int);
    EXPECT_EQ(blocksHeld, before);
}

} // namespace
