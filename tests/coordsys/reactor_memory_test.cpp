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

    /// Adds reactors, each without memory, until one needs some: the list has room for the others already.
    Qeapp::ErrorStatus addUntilMemoryIsMissing()
    {
        for (int number = 0; number < 1000; ++number) {
            reactors.push_back(std::make_unique<RecordingReactor>(log, std::to_string(number)));
            const ScopedShortage shortage;
            if (const Qeapp::ErrorStatus result = reactors.back()->add(); result != Qeapp::eOk)
                return result;
        }
        return Qeapp::eOk;
    }
    void addReactor()
    {
        reactors.push_back(std::make_unique<RecordingReactor>(log, "A"));
        ASSERT_EQ(reactors.back()->add(), Qeapp::eOk);
    }
};

TEST_F(ReactorMemory, WithoutMemoryAReactorIsRefused)
{
    EXPECT_EQ(addUntilMemoryIsMissing(), Qeapp::eOutOfMemory);
}

TEST_F(ReactorMemory, WithoutMemoryTheListIsUnchanged)
{
    ASSERT_EQ(addUntilMemoryIsMissing(), Qeapp::eOutOfMemory);
    Cs::NotifyCsTransformationChanged();
    ASSERT_EQ(log.size(), reactors.size() - 1);
    for (std::size_t index = 0; index < log.size(); ++index)
        EXPECT_EQ(log[index].reactor, std::to_string(index));
}

TEST_F(ReactorMemory, ARefusedReactorCanBeAddedOnceThereIsMemory)
{
    ASSERT_EQ(addUntilMemoryIsMissing(), Qeapp::eOutOfMemory);
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
