#include "coordsys/coordinate_system_reactors.h"
#include "support/coordsys_test.h"

namespace {

using namespace Tests;

struct ReactorException {};

/// Registers two reactors. The first one throws or changes the drawing.
class ReactorBehaviour : public CoordsysTest {
protected:
    RecordingReactor second{log, "B"};

    void SetUp() override
    {
        ASSERT_EQ(reactor.add(), Qeapp::eOk);
        ASSERT_EQ(second.add(), Qeapp::eOk);
    }

    void throwAtNotice(const Notice& fatal)
    {
        reactor.action = [fatal](const Notice& notice) {
            if (notice == fatal)
                throw ReactorException();
        };
    }
    void expectBothReactorsNotified()
    {
        reactor.action = nullptr;
        log.clear();
        Cs::NotifyCsTransformationChanged();
        EXPECT_EQ(log, Notices({{Event::transformationChanged, std::nullopt, "A"},
                                {Event::transformationChanged, std::nullopt, "B"}}));
    }
};

TEST_F(ReactorBehaviour, ExceptionInTheFirstQuestion_ReachesTheCallerAndChangesNothing)
{
    storeSystem(L"EPSG:2263");
    const auto before = drawing.contents();
    throwAtNotice({Event::asked, kAssignedCode});
    EXPECT_THROW(static_cast<void>(assign(kAssignedCode)), ReactorException);
    EXPECT_EQ(drawing.contents(), before);
    EXPECT_EQ(log, Notices({{Event::asked, kAssignedCode}}));
    expectBothReactorsNotified();
}

TEST_F(ReactorBehaviour, ExceptionInTheQuestionAboutTheRemoval_ReachesTheCallerAndChangesNothing)
{
    storeSystem(L"EPSG:2263");
    const auto before = drawing.contents();
    throwAtNotice({Event::asked, std::nullopt});
    EXPECT_THROW(static_cast<void>(assign(kAssignedCode)), ReactorException);
    EXPECT_EQ(drawing.contents(), before);
    expectBothReactorsNotified();
}

TEST_F(ReactorBehaviour, ExceptionInTheNoticeOfTheRemoval_LeavesTheDrawingWithoutASystem)
{
    storeSystem(L"EPSG:2263");
    throwAtNotice({Event::changed, std::nullopt});
    EXPECT_THROW(static_cast<void>(assign(kAssignedCode)), ReactorException);
    EXPECT_EQ(describeStoredSystem(), L"none");
    EXPECT_EQ(log.back(), (Notice{Event::changed, std::nullopt, "A"}));
    expectBothReactorsNotified();
}

TEST_F(ReactorBehaviour, ExceptionInTheLastNotice_KeepsTheAssignment)
{
    throwAtNotice({Event::changed, kAssignedCode});
    EXPECT_THROW(static_cast<void>(assign(kAssignedCode)), ReactorException);
    EXPECT_EQ(describeStoredSystem(), L"system EPSG:25832");
    expectBothReactorsNotified();
}

TEST_F(ReactorBehaviour, ExceptionInTheNoticeOfAVeto_ReachesTheCallerAndChangesNothing)
{
    storeSystem(L"EPSG:2263");
    const auto before = drawing.contents();
    second.answer = [](const Notice&) { return false; };
    throwAtNotice({Event::vetoed, kAssignedCode});
    EXPECT_THROW(static_cast<void>(assign(kAssignedCode)), ReactorException);
    EXPECT_EQ(drawing.contents(), before);
    expectBothReactorsNotified();
}

TEST_F(ReactorBehaviour, ExceptionInTheNoticeOfATransformationChange_ReachesTheCaller)
{
    throwAtNotice({Event::transformationChanged, std::nullopt});
    EXPECT_THROW(Cs::NotifyCsTransformationChanged(), ReactorException);
    expectBothReactorsNotified();
}

TEST_F(ReactorBehaviour, ExceptionWhileClearing_ReachesTheCallerAndLeavesNoTransaction)
{
    throwAtNotice({Event::changed, std::nullopt});
    EXPECT_THROW(static_cast<void>(Cs::ClearCoordinateSystem(database())), ReactorException);
    EXPECT_EQ(database()->transactionManager()->numActiveTransactions(), 0);
}

TEST_F(ReactorBehaviour, ExceptionBeforeAnyFailure_ReportsStatusZero)
{
    throwAtNotice({Event::asked, kAssignedCode});
    const SystemHolder definition = catalogSystem(kAssignedCode);
    EXPECT_THROW(static_cast<void>(assign(definition)), ReactorException);
    EXPECT_EQ(status, 0);
}

TEST_F(ReactorBehaviour, AssignmentInTheLastNotice_SendsItsOwnNotices)
{
    ASSERT_EQ(second.remove(), Qeapp::eOk);
    reactor.action = [&](const Notice& notice) {
        if (notice == Notice{Event::changed, kAssignedCode}) {
            EXPECT_EQ(Cs::SetCoordinateSystem(L"EPSG:2263", database()), Qeapp::eOk);
        }
    };
    EXPECT_EQ(assign(kAssignedCode), Qeapp::eOk);
    Notices expected = assignmentNotices(kAssignedCode);
    for (const Notice& notice : assignmentNotices(L"EPSG:2263"))
        expected.push_back(notice);
    EXPECT_EQ(log, expected);
    EXPECT_EQ(describeStoredSystem(), L"system EPSG:2263");
}

TEST_F(ReactorBehaviour, ClearingInTheLastNotice_NotifiesTheOtherReactorsBeforeTheOuterNotice)
{
    reactor.action = [&](const Notice& notice) {
        if (notice == Notice{Event::changed, kAssignedCode}) {
            EXPECT_EQ(Cs::ClearCoordinateSystem(database()), Qeapp::eOk);
        }
    };
    EXPECT_EQ(assign(kAssignedCode), Qeapp::eOk);
    const Notices tail(log.end() - 6, log.end());
    EXPECT_EQ(tail, Notices({{Event::changed, kAssignedCode, "A"},
                             {Event::asked, std::nullopt, "A"},
                             {Event::asked, std::nullopt, "B"},
                             {Event::changed, std::nullopt, "A"},
                             {Event::changed, std::nullopt, "B"},
                             {Event::changed, kAssignedCode, "B"}}));
    EXPECT_EQ(describeStoredSystem(), L"none");
}

TEST_F(ReactorBehaviour, AssignmentInTheNoticeOfTheRemoval_IsReplacedByTheOuterAssignment)
{
    reactor.action = [&, done = false](const Notice& notice) mutable {
        if (done || notice.event != Event::changed)
            return;
        done = true;
        EXPECT_EQ(Cs::SetCoordinateSystem(L"EPSG:2263", database()), Qeapp::eOk);
    };
    EXPECT_EQ(assign(kAssignedCode), Qeapp::eOk);
    EXPECT_EQ(describeStoredSystem(), L"system EPSG:25832");
}

TEST_F(ReactorBehaviour, ReadingInAQuestion_IsAllowed)
{
    storeSystem(L"EPSG:2263");
    std::wstring seen;
    reactor.answer = [&](const Notice&) {
        seen = describeStoredSystem();
        return false;
    };
    EXPECT_EQ(assign(kAssignedCode), Qeapp::eVetoed);
    EXPECT_EQ(seen, L"system EPSG:2263");
}

TEST_F(ReactorBehaviour, AnnouncedName_StaysValidWhenAReactorChangesTheDefinition)
{
    SystemHolder definition = catalogSystem(kAssignedCode);
    reactor.action = [&](const Notice& notice) {
        if (notice == Notice{Event::asked, kAssignedCode}) {
            ASSERT_EQ(definition->SetDatum(catalogDatum(L"EPSG:6258").get()), Library::statusOk);
        }
    };
    EXPECT_EQ(assign(definition), Qeapp::eOk);
    EXPECT_EQ(log.back(), (Notice{Event::changed, kAssignedCode, "B"}));
}

TEST_F(ReactorBehaviour, ChangedWorkingDatabase_DoesNotRedirectTheAssignment)
{
    const Drawing other;
    QeDbHostApplicationServices* const services = qedbHostApplicationServices();
    services->setWorkingDatabase(database());
    reactor.action = [&](const Notice&) { services->setWorkingDatabase(other.database()); };
    EXPECT_EQ(Cs::SetCoordinateSystem(kAssignedCode, nullptr), Qeapp::eOk);
    services->setWorkingDatabase(nullptr);
    EXPECT_EQ(reactor.databases, std::vector<QeDbDatabase*>(4, database()));
    EXPECT_EQ(describeStoredSystem(), L"system EPSG:25832");
}

} // namespace
