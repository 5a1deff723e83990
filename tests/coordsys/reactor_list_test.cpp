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

    /// The reactors that are notified of an event, in order.
    std::string listeners()
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
    EXPECT_EQ(listeners(), "");
}

TEST_F(ReactorList, AnAddedReactorHearsOfEvents)
{
    EXPECT_EQ(reactor.add(), Qeapp::eOk);
    EXPECT_EQ(listeners(), "A");
}

TEST_F(ReactorList, ReactorsAreCalledInTheOrderOfTheirRegistration)
{
    ASSERT_EQ(third.add(), Qeapp::eOk);
    ASSERT_EQ(reactor.add(), Qeapp::eOk);
    ASSERT_EQ(second.add(), Qeapp::eOk);
    EXPECT_EQ(listeners(), "CAB");
}

TEST_F(ReactorList, NullIsNotAdded)
{
    EXPECT_EQ(Cs::AddCoordinateSystemReactor(nullptr), Qeapp::eInvalidInput);
    EXPECT_EQ(listeners(), "");
}

TEST_F(ReactorList, ASecondRegistrationIsRefused)
{
    ASSERT_EQ(reactor.add(), Qeapp::eOk);
    EXPECT_EQ(reactor.add(), Qeapp::eInvalidInput);
    EXPECT_EQ(listeners(), "A");
}

TEST_F(ReactorList, ASecondRegistrationIsNotCounted)
{
    ASSERT_EQ(reactor.add(), Qeapp::eOk);
    ASSERT_EQ(reactor.add(), Qeapp::eInvalidInput);
    EXPECT_EQ(reactor.remove(), Qeapp::eOk);
    EXPECT_EQ(listeners(), "");
}

TEST_F(ReactorList, ARemovedReactorHearsNothing)
{
    ASSERT_EQ(reactor.add(), Qeapp::eOk);
    EXPECT_EQ(reactor.remove(), Qeapp::eOk);
    EXPECT_EQ(listeners(), "");
}

TEST_F(ReactorList, ARemovalKeepsTheOrderOfTheOthers)
{
    ASSERT_EQ(reactor.add(), Qeapp::eOk);
    ASSERT_EQ(second.add(), Qeapp::eOk);
    ASSERT_EQ(third.add(), Qeapp::eOk);
    EXPECT_EQ(second.remove(), Qeapp::eOk);
    EXPECT_EQ(listeners(), "AC");
}

TEST_F(ReactorList, AReactorAddedAgainStandsLast)
{
    ASSERT_EQ(reactor.add(), Qeapp::eOk);
    ASSERT_EQ(second.add(), Qeapp::eOk);
    ASSERT_EQ(reactor.remove(), Qeapp::eOk);
    ASSERT_EQ(reactor.add(), Qeapp::eOk);
    EXPECT_EQ(listeners(), "BA");
}

TEST_F(ReactorList, NullIsNotRemoved)
{
    ASSERT_EQ(reactor.add(), Qeapp::eOk);
    EXPECT_EQ(Cs::RemoveCoordinateSystemReactor(nullptr), Qeapp::eInvalidInput);
    EXPECT_EQ(listeners(), "A");
}

TEST_F(ReactorList, FromAnEmptyListNothingIsRemoved)
{
    EXPECT_EQ(Cs::RemoveCoordinateSystemReactor(nullptr), Qeapp::eInvalidInput);
    EXPECT_EQ(reactor.remove(), Qeapp::eInvalidInput);
}

TEST_F(ReactorList, AnUnregisteredReactorIsNotRemoved)
{
    ASSERT_EQ(reactor.add(), Qeapp::eOk);
    EXPECT_EQ(second.remove(), Qeapp::eInvalidInput);
    EXPECT_EQ(listeners(), "A");
}

TEST_F(ReactorList, AReactorIsRemovedOnce)
{
    ASSERT_EQ(reactor.add(), Qeapp::eOk);
    ASSERT_EQ(reactor.remove(), Qeapp::eOk);
    EXPECT_EQ(reactor.remove(), Qeapp::eInvalidInput);
}

TEST_F(ReactorList, TheReactorsThemselvesAreNotOwned)
{
    ASSERT_EQ(reactor.add(), Qeapp::eOk);
    ASSERT_EQ(reactor.remove(), Qeapp::eOk);
    ASSERT_EQ(reactor.add(), Qeapp::eOk); // which would read freed memory otherwise
    EXPECT_EQ(listeners(), "A");
}

TEST_F(ReactorList, WithoutReactorsEveryChangeIsAllowed)
{
    EXPECT_TRUE(Cs::NotifyCoordinateSystemWillChange(database(), L"EPSG:25832"));
}

TEST(ReactorClass, AllowsEveryChangeByDefault)
{
    Cs::OrvelCoordinateSystemReactor reactor;
    EXPECT_TRUE(reactor.CoordinateSystemWillChange(nullptr, nullptr));
    EXPECT_TRUE(reactor.CoordinateSystemWillChange(nullptr, L"EPSG:25832"));
}

TEST(ReactorClass, DoesNothingByDefault)
{
    Cs::OrvelCoordinateSystemReactor reactor;
    EXPECT_NO_THROW(reactor.CoordinateSystemChanged(nullptr, nullptr));
    EXPECT_NO_THROW(reactor.CoordinateSystemChangeVetoed(nullptr, L""));
    EXPECT_NO_THROW(reactor.CsTransformationChanged());
}

TEST(ReactorClass, HasNoDataOfItsOwn)
{
    EXPECT_EQ(sizeof(Cs::OrvelCoordinateSystemReactor), sizeof(void*));
}

TEST(ReactorClass, ACopyIsAnotherReactor)
{
    Cs::OrvelCoordinateSystemReactor reactor;
    ASSERT_EQ(Cs::AddCoordinateSystemReactor(&reactor), Qeapp::eOk);
    Cs::OrvelCoordinateSystemReactor copy(reactor);
    EXPECT_EQ(Cs::RemoveCoordinateSystemReactor(&copy), Qeapp::eInvalidInput);
    EXPECT_EQ(Cs::RemoveCoordinateSystemReactor(&reactor), Qeapp::eOk);
}

TEST(ReactorClass, AssignmentGivesTheReactorItself)
{
    const Cs::OrvelCoordinateSystemReactor other;
    Cs::OrvelCoordinateSystemReactor reactor;
    EXPECT_EQ(&(reactor = other), &reactor);
}

} // namespace
