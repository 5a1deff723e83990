#include <array>
#include <type_traits>

#include "coordsys/coordinate_system_reactors.h"
#include "support/coordsys_test.h"

namespace {

using namespace Tests;

class ReactorList : public CoordsysTest {
protected:
    RecordingReactor second{log, "B"};
    RecordingReactor third{log, "C"};

    /// Sends a notice. Returns the names of the reactors that it reaches, in order.
    std::string notifyReactors()
    {
        log.clear();
        Cs::NotifyCsTransformationChanged();
        std::string names;
        for (const Notice& notice : log)
            names += notice.reactor;
        return names;
    }
};

TEST_F(ReactorList, IsEmptyAtFirst)
{
    EXPECT_EQ(notifyReactors(), "");
}

TEST_F(ReactorList, AddedReactorIsNotified)
{
    EXPECT_EQ(reactor.add(), Qeapp::eOk);
    EXPECT_EQ(notifyReactors(), "A");
}

TEST_F(ReactorList, ReactorsAreNotifiedInTheOrderOfRegistration)
{
    ASSERT_EQ(third.add(), Qeapp::eOk);
    ASSERT_EQ(reactor.add(), Qeapp::eOk);
    ASSERT_EQ(second.add(), Qeapp::eOk);
    EXPECT_EQ(notifyReactors(), "CAB");
}

TEST_F(ReactorList, NullIsNotAdded)
{
    EXPECT_EQ(Cs::AddCoordinateSystemReactor(nullptr), Qeapp::eInvalidInput);
    EXPECT_EQ(notifyReactors(), "");
}

TEST_F(ReactorList, SecondRegistrationIsRefused)
{
    ASSERT_EQ(reactor.add(), Qeapp::eOk);
    EXPECT_EQ(reactor.add(), Qeapp::eInvalidInput);
    EXPECT_EQ(notifyReactors(), "A");
}

TEST_F(ReactorList, SecondRegistrationNeedsNoSecondRemoval)
{
    ASSERT_EQ(reactor.add(), Qeapp::eOk);
    ASSERT_EQ(reactor.add(), Qeapp::eInvalidInput);
    EXPECT_EQ(reactor.remove(), Qeapp::eOk);
    EXPECT_EQ(notifyReactors(), "");
}

TEST_F(ReactorList, RemovedReactorIsNotNotified)
{
    ASSERT_EQ(reactor.add(), Qeapp::eOk);
    EXPECT_EQ(reactor.remove(), Qeapp::eOk);
    EXPECT_EQ(notifyReactors(), "");
}

TEST_F(ReactorList, RemovalKeepsTheOrderOfTheOthers)
{
    ASSERT_EQ(reactor.add(), Qeapp::eOk);
    ASSERT_EQ(second.add(), Qeapp::eOk);
    ASSERT_EQ(third.add(), Qeapp::eOk);
    EXPECT_EQ(second.remove(), Qeapp::eOk);
    EXPECT_EQ(notifyReactors(), "AC");
}

TEST_F(ReactorList, ReactorThatIsAddedAgainIsLast)
{
    ASSERT_EQ(reactor.add(), Qeapp::eOk);
    ASSERT_EQ(second.add(), Qeapp::eOk);
    ASSERT_EQ(reactor.remove(), Qeapp::eOk);
    ASSERT_EQ(reactor.add(), Qeapp::eOk);
    EXPECT_EQ(notifyReactors(), "BA");
}

TEST_F(ReactorList, NullIsNotRemoved)
{
    ASSERT_EQ(reactor.add(), Qeapp::eOk);
    EXPECT_EQ(Cs::RemoveCoordinateSystemReactor(nullptr), Qeapp::eInvalidInput);
    EXPECT_EQ(notifyReactors(), "A");
}

TEST_F(ReactorList, RemovalFromAnEmptyListIsRefused)
{
    EXPECT_EQ(Cs::RemoveCoordinateSystemReactor(nullptr), Qeapp::eInvalidInput);
    EXPECT_EQ(reactor.remove(), Qeapp::eInvalidInput);
}

TEST_F(ReactorList, UnregisteredReactorIsNotRemoved)
{
    ASSERT_EQ(reactor.add(), Qeapp::eOk);
    EXPECT_EQ(second.remove(), Qeapp::eInvalidInput);
    EXPECT_EQ(notifyReactors(), "A");
}

TEST_F(ReactorList, SecondRemovalIsRefused)
{
    ASSERT_EQ(reactor.add(), Qeapp::eOk);
    ASSERT_EQ(reactor.remove(), Qeapp::eOk);
    EXPECT_EQ(reactor.remove(), Qeapp::eInvalidInput);
}

TEST_F(ReactorList, ReactorsAreNotOwned)
{
    ASSERT_EQ(reactor.add(), Qeapp::eOk);
    ASSERT_EQ(reactor.remove(), Qeapp::eOk);
    ASSERT_EQ(reactor.add(), Qeapp::eOk); // would fail if the list had deleted it
    EXPECT_EQ(notifyReactors(), "A");
}

TEST_F(ReactorList, EveryChangeIsAllowedWithoutReactors)
{
    EXPECT_TRUE(Cs::NotifyCoordinateSystemWillChange(database(), L"EPSG:25832"));
}

TEST(ReactorClass, AllowsEveryChangeByDefault)
{
    Cs::OrvelCoordinateSystemReactor reactor;
    EXPECT_TRUE(reactor.CoordinateSystemWillChange(nullptr, nullptr));
    EXPECT_TRUE(reactor.CoordinateSystemWillChange(nullptr, L"EPSG:25832"));
}

TEST(ReactorClass, IgnoresEveryNoticeByDefault)
{
    Cs::OrvelCoordinateSystemReactor reactor;
    EXPECT_NO_THROW(reactor.CoordinateSystemChanged(nullptr, nullptr));
    EXPECT_NO_THROW(reactor.CoordinateSystemChangeVetoed(nullptr, L""));
    EXPECT_NO_THROW(reactor.CsTransformationChanged());
}

TEST(ReactorClass, HasNoData)
{
    EXPECT_EQ(sizeof(Cs::OrvelCoordinateSystemReactor), sizeof(void*));
}

TEST(ReactorClass, CopyIsAnotherReactor)
{
    Cs::OrvelCoordinateSystemReactor reactor;
    ASSERT_EQ(Cs::AddCoordinateSystemReactor(&reactor), Qeapp::eOk);
    Cs::OrvelCoordinateSystemReactor copy(reactor);
    EXPECT_EQ(Cs::RemoveCoordinateSystemReactor(&copy), Qeapp::eInvalidInput);
    EXPECT_EQ(Cs::RemoveCoordinateSystemReactor(&reactor), Qeapp::eOk);
}

TEST(ReactorClass, AssignmentReturnsTheReactor)
{
    const Cs::OrvelCoordinateSystemReactor other;
    Cs::OrvelCoordinateSystemReactor reactor;
    EXPECT_EQ(&(reactor = other), &reactor);
}

} // namespace
