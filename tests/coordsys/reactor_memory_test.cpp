// The list of reactors without memory, and the memory that it releases.
#include <memory>
#include <new>

#include "coordsys/coordinate_system_reactors.h"
#include "support/allocations/counted_allocations.h"
#include "support/coordsys_test.h"

namespace {

using namespace Tests;

class ReactorMemory : public CoordsysTest {
protected:
    std::vector<std::unique_ptr<RecordingReactor>> reactors;

    void addReactor(const char* name = "A")
    {
        reactors.push_back(std::make_unique<RecordingReactor>(log, name));
        ASSERT_EQ(reactors.back()->add(), Qeapp::eOk);
    }
    /// Adds a third reactor while allocations fail.
    Qeapp::ErrorStatus addThirdWithoutMemory()
    {
        addReactor("A");
        addReactor("B");
        reactors.push_back(std::make_unique<RecordingReactor>(log, "C"));
        const ScopedShortage shortage;
        return reactors.back()->add();
    }
};

TEST_F(ReactorMemory, AddingWithoutMemoryReturnsOutOfMemory)
{
    EXPECT_EQ(addThirdWithoutMemory(), Qeapp::eOutOfMemory);
}

TEST_F(ReactorMemory, AddingWithoutMemoryKeepsTheList)
{
    ASSERT_EQ(addThirdWithoutMemory(), Qeapp::eOutOfMemory);
    Cs::NotifyCsTransformationChanged();
    ASSERT_EQ(log.size(), 2U);
    EXPECT_EQ(log[0].reactor, "A");
    EXPECT_EQ(log[1].reactor, "B");
}

TEST_F(ReactorMemory, RefusedReactorCanBeAddedLater)
{
    ASSERT_EQ(addThirdWithoutMemory(), Qeapp::eOutOfMemory);
    EXPECT_EQ(reactors.back()->remove(), Qeapp::eInvalidInput);
    EXPECT_EQ(reactors.back()->add(), Qeapp::eOk);
}

TEST_F(ReactorMemory, NoReactorIsCalledWithoutMemoryForTheSnapshot)
{
    addReactor();
    {
        const ScopedShortage shortage;
        EXPECT_THROW(Cs::NotifyCsTransformationChanged(), std::bad_alloc);
    }
    EXPECT_EQ(log, Notices());
}

TEST_F(ReactorMemory, NoticeReleasesItsMemory)
{
    addReactor();
    log.reserve(8);
    const long before = allocatedBlocks();
    Cs::NotifyCsTransformationChanged();
    EXPECT_EQ(allocatedBlocks(), before);
}

TEST_F(ReactorMemory, NoticeReleasesItsMemoryWhenAReactorThrows)
{
    addReactor();
    log.reserve(8);
    reactors.back()->action = [](const Notice&) { throw 1; };
    const long before = allocatedBlocks();
    EXPECT_THROW(Cs::NotifyCsTransformationChanged(), int);
    EXPECT_EQ(allocatedBlocks(), before);
}

} // namespace
