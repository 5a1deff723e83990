#include "coordsys/coordinate_system_reactors.h"
#include "support/coordsys_test.h"

namespace {

using namespace Tests;

struct Objection {};

/// Two reactors, of which the first misbehaves.
class ReactorBehaviour : public CoordsysTest {
protected:
    RecordingReactor second{log, "B"};

    void SetUp() override
    {
        ASSERT_EQ(reactor.add(), Qeapp::eOk);
        ASSERT_EQ(second.add(), Qeapp::eOk);
    }

    void throwAt(const Notice& fatal)
    {
        reactor.action = [fatal](const Notice& notice) {
            if (notice == fatal)
                throw Objection();
        };
    }
    void expectListIntact()
    {
        reactor.action = nullptr;
        log.clear();
        Cs::NotifyCsTransformationChanged();
        EXPECT_EQ(log, Notices({{Event::transformationChanged, std::nullopt, "A"},
                                {Event::transformationChanged, std::nullopt, "B"}}));
    }
    std::wstring storedCode() const
    {
        SystemHolder definition;
        EXPECT_EQ(Cs::GetCoordinateSystem(definition.put(), nullptr, database()), Qeapp::eOk);
        return describe(definition.get());
    }
};

TEST_F(ReactorBehaviour, ThrowingAtTheFirstQuestion_PassesAndChangesNothing)
{
    storeSystem(L"EPSG:2263");
    const auto before = drawing.contents();
    throwAt({Event::asked, kAssignedCode});
    EXPECT_THROW(static_cast<void>(assign(kAssignedCode)), Objection);
    EXPECT_EQ(drawing.contents(), before);
    EXPECT_EQ(log, Notices({{Event::asked, kAssignedCode}}));
    expectListIntact();
}

TEST_F(ReactorBehaviour, ThrowingAtTheRemovalsQuestion_PassesAndChangesNothing)
{
    storeSystem(L"EPSG:2263");
    const auto before = drawing.contents();
    throwAt({Event::asked, std::nullopt});
    EXPECT_THROW(static_cast<void>(assign(kAssignedCode)), Objection);
    EXPECT_EQ(drawing.contents(), before);
    expectListIntact();
}

TEST_F(ReactorBehaviour, ThrowingAtTheRemovalsNotice_LeavesTheDrawingEmpty)
{
    storeSystem(L"EPSG:2263");
    throwAt({Event::changed, std::nullopt});
    EXPECT_THROW(static_cast<void>(assign(kAssignedCode)), Objection);
    EXPECT_EQ(storedCode(), L"none");
    EXPECT_EQ(log.back(), (Notice{Event::changed, std::nullopt, "A"}));
    expectListIntact();
}

TEST_F(ReactorBehaviour, ThrowingAtTheLastNotice_LeavesTheAssignmentDone)
{
    throwAt({Event::changed, kAssignedCode});
    EXPECT_THROW(static_cast<void>(assign(kAssignedCode)), Objection);
    EXPECT_EQ(storedCode(), L"system EPSG:25832");
    expectListIntact();
}

TEST_F(ReactorBehaviour, ThrowingAtAVeto_PassesAndChangesNothing)
{
    storeSystem(L"EPSG:2263");
    const auto before = drawing.contents();
    second.answer = [](const Notice&) { return false; };
    throwAt({Event::vetoed, kAssignedCode});
    EXPECT_THROW(static_cast<void>(assign(kAssignedCode)), Objection);
    EXPECT_EQ(drawing.contents(), before);
    expectListIntact();
}

TEST_F(ReactorBehaviour, ThrowingAtAChangeOfTheTransformations_Passes)
{
    throwAt({Event::transformationChanged, std::nullopt});
    EXPECT_THROW(Cs::NotifyCsTransformationChanged(), Objection);
    expectListIntact();
}

TEST_F(ReactorBehaviour, ThrowingOnClearing_PassesAndLeavesNoTransaction)
{
    throwAt({Event::changed, std::nullopt});
    EXPECT_THROW(static_cast<void>(Cs::ClearCoordinateSystem(database())), Objection);
    EXPECT_EQ(database()->transactionManager()->numActiveTransactions(), 0);
}

TEST_F(ReactorBehaviour, ThrowingBeforeAnyFailure_ReportsStatusZero)
{
    throwAt({Event::asked, kAssignedCode});
    const SystemHolder definition = catalogSystem(kAssignedCode);
    EXPECT_THROW(static_cast<void>(assign(definition)), Objection);
    EXPECT_EQ(status, 0);
}

TEST_F(ReactorBehaviour, AssigningInsideTheLastNotice_IsAWholeAssignmentOfItsOwn)
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
    EXPECT_EQ(storedCode(), L"system EPSG:2263");
}

TEST_F(ReactorBehaviour, AssigningInsideTheLastNotice_ReachesTheOtherReactorsBeforeTheOuterNotice)
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
    EXPECT_EQ(storedCode(), L"none");
}

TEST_F(ReactorBehaviour, AssigningInsideTheRemovalsNotice_IsOverwrittenByTheOuterAssignment)
{
    reactor.action = [&, done = false](const Notice& notice) mutable {
        if (done || notice.event != Event::changed)
            return;
        done = true;
        EXPECT_EQ(Cs::SetCoordinateSystem(L"EPSG:2263", database()), Qeapp::eOk);
    };
    EXPECT_EQ(assign(kAssignedCode), Qeapp::eOk);
    EXPECT_EQ(storedCode(), L"system EPSG:25832");
}

TEST_F(ReactorBehaviour, ReadingInsideAQuestion_IsAllowed)
{
    storeSystem(L"EPSG:2263");
    std::wstring seen;
    reactor.answer = [&](const Notice&) {
        seen = storedCode();
        return false;
    };
    EXPECT_EQ(assign(kAssignedCode), Qeapp::eVetoed);
    EXPECT_EQ(seen, L"system EPSG:2263");
}

TEST_F(ReactorBehaviour, TheAnnouncedNameOutlivesWhatAReactorDoesToTheDefinition)
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

TEST_F(ReactorBehaviour, AnotherWorkingDatabaseMeanwhile_DoesNotDivertTheAssignment)
{
    const Drawing other;
    QeDbHostApplicationServices* const services = qedbHostApplicationServices();
    services->setWorkingDatabase(database());
    reactor.action = [&](const Notice&) { services->setWorkingDatabase(other.database()); };
    EXPECT_EQ(Cs::SetCoordinateSystem(kAssignedCode, nullptr), Qeapp::eOk);
    services->setWorkingDatabase(nullptr);
    EXPECT_EQ(reactor.databases, std::vector<QeDbDatabase*>(4, database()));
    EXPECT_EQ(storedCode(), L"system EPSG:25832");
}

} // namespace
