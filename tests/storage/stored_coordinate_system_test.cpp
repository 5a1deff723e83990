#include "storage/stored_coordinate_system.h"

#include "storage/failing_calls.h"
#include "support/drawing.h"
#include "support/platform_test.h"

namespace Tests {
namespace {

using Embedded::ScopedFault;
using Orvel::ClearStoredCoordinateSystem;

class StoredCoordinateSystem : public PlatformTest {
protected:
    Drawing drawing;

    StoredCoordinateSystem() { storeAllForms(drawing); }

    static void storeAllForms(Drawing& target)
    {
        target.withLegacyCode(L"EPSG:25832").withXrecord({{1071, 1}}).withGeoData(L"text");
    }
    Qeapp::ErrorStatus clear() { return ClearStoredCoordinateSystem(drawing.database()); }
    QeDbTransactionManager& transactions() const { return *drawing.database()->transactionManager(); }

    void expectCleared() const
    {
        EXPECT_EQ(drawing.legacyChain(), std::nullopt);
        EXPECT_EQ(drawing.xrecord(), std::nullopt);
        EXPECT_EQ(drawing.geoDataText(), L"");
    }
};

TEST_F(StoredCoordinateSystem, ClearingRemovesAllThreeForms)
{
    EXPECT_EQ(clear(), Qeapp::eOk);
    expectCleared();
}

TEST_F(StoredCoordinateSystem, ClearingLeavesNoTransaction)
{
    EXPECT_EQ(clear(), Qeapp::eOk);
    EXPECT_EQ(transactions().numActiveTransactions(), 0);
}

TEST_F(StoredCoordinateSystem, ClearingAnEmptyDrawingSucceeds)
{
    const Drawing empty;
    EXPECT_EQ(ClearStoredCoordinateSystem(empty.database()), Qeapp::eOk);
    EXPECT_EQ(empty.geoDataText(), std::nullopt);
    EXPECT_TRUE(empty.hasRegisteredApplication());
}

TEST_F(StoredCoordinateSystem, ClearingRemovesEachFormAlone)
{
    Drawing legacy;
    legacy.withLegacyCode(L"EPSG:25832");
    EXPECT_EQ(ClearStoredCoordinateSystem(legacy.database()), Qeapp::eOk);
    EXPECT_EQ(legacy.legacyChain(), std::nullopt);
    Drawing xrecord;
    xrecord.withXrecord({{1071, 1}});
    EXPECT_EQ(ClearStoredCoordinateSystem(xrecord.database()), Qeapp::eOk);
    EXPECT_EQ(xrecord.xrecord(), std::nullopt);
    Drawing geoData;
    geoData.withGeoData(L"text");
    EXPECT_EQ(ClearStoredCoordinateSystem(geoData.database()), Qeapp::eOk);
    EXPECT_EQ(geoData.geoDataText(), L"");
}

TEST_F(StoredCoordinateSystem, ClearingTwiceSucceeds)
{
    EXPECT_EQ(clear(), Qeapp::eOk);
    EXPECT_EQ(clear(), Qeapp::eOk);
    expectCleared();
}

TEST_F(StoredCoordinateSystem, ClearingKeepsOtherContents)
{
    drawing.withXrecord({{300, L"other"}}, L"OTHER");
    EXPECT_EQ(clear(), Qeapp::eOk);
    EXPECT_EQ(drawing.xrecord(L"OTHER"), (Items{{300, L"other"}}));
}

TEST_F(StoredCoordinateSystem, NullDatabaseReturns124)
{
    EXPECT_EQ(ClearStoredCoordinateSystem(nullptr), 124);
}

TEST_F(StoredCoordinateSystem, TransactionThatCannotBeStartedReturns8AndChangesNothing)
{
    const std::string before = drawing.contents();
    const ScopedFault fault(failing("QeDbTransactionManager::startTransaction"));
    EXPECT_EQ(clear(), 8);
    EXPECT_EQ(drawing.contents(), before);
    EXPECT_EQ(Embedded::FaultInjection::seen().size(), 1U) << "nothing else was tried";
}

/// The result of each failing call. Any other failure is passed on.
int expectedClearResult(const FallibleCall& call)
{
    static const std::map<std::string, int> results{
        {"QeDbTransactionManager::startTransaction", 8},
        {"qeHeapAlloc", 6},
        {"qeutBuildList", 6},
        {"qeutNewRb", 6},
        {"qeapp_malloc", 6},
    };
    const auto found = results.find(call.name);
    return found == results.end() ? kInjectedResult : found->second;
}

TEST_F(StoredCoordinateSystem, EveryFailingCallKeepsAllThreeForms)
{
    const auto calls = recordFallibleCalls([&] {
        Drawing other;
        storeAllForms(other);
        Embedded::FaultInjection::watch();
        EXPECT_EQ(ClearStoredCoordinateSystem(other.database()), Qeapp::eOk);
    });
    EXPECT_GE(calls.size(), 10U);
    const std::string before = drawing.contents();
    for (const FallibleCall& call : calls) {
        {
            const ScopedFault fault(failing(call));
            EXPECT_EQ(clear(), expectedClearResult(call)) << call;
        }
        EXPECT_EQ(drawing.contents(), before) << call;
        EXPECT_EQ(transactions().numActiveTransactions(), 0) << call;
    }
}

TEST_F(StoredCoordinateSystem, EveryFailingCallUndoesTheRegistrationOfTheApplication)
{
    const auto calls = recordFallibleCalls([&] {
        const Drawing other;
        EXPECT_EQ(ClearStoredCoordinateSystem(other.database()), Qeapp::eOk);
    });
    Drawing empty;
    const std::string before = empty.contents();
    for (const FallibleCall& call : calls) {
        if (call.name == "QeDbDictionary::remove" || call.name == "qedbGetGeoDataObjId")
            continue; // other tests say which of their failures count
        const ScopedFault fault(failing(call));
        EXPECT_EQ(ClearStoredCoordinateSystem(empty.database()), expectedClearResult(call)) << call;
        EXPECT_FALSE(empty.hasRegisteredApplication()) << call;
    }
}

TEST_F(StoredCoordinateSystem, NoStepFollowsAFailedStep)
{
    const ScopedFault fault(failing("QeDbObject::setXData"));
    EXPECT_EQ(clear(), kInjectedResult);
    const auto& seen = Embedded::FaultInjection::seen();
    EXPECT_EQ(std::count(seen.begin(), seen.end(), "QeDbDictionary::remove"), 0);
    EXPECT_EQ(std::count(seen.begin(), seen.end(), "qedbGetGeoDataObjId"), 0);
}

TEST_F(StoredCoordinateSystem, StepsGoFromTheLegacyRecordToTheGeoData)
{
    Embedded::FaultInjection::watch();
    EXPECT_EQ(clear(), Qeapp::eOk);
    Embedded::FaultInjection::disarm();
    const auto& seen = Embedded::FaultInjection::seen();
    const auto at = [&](const char* call) { return std::find(seen.begin(), seen.end(), call) - seen.begin(); };
    EXPECT_EQ(at("QeDbTransactionManager::startTransaction"), 0);
    EXPECT_LT(at("QeDbObject::setXData"), at("QeDbDictionary::remove"));
    EXPECT_LT(at("QeDbDictionary::remove"), at("QeDbGeoData::setCoordinateSystem"));
    EXPECT_EQ(seen.back(), "QeDbTransactionManager::endTransaction");
}

TEST_F(StoredCoordinateSystem, FailingEndOfTheTransactionKeepsAllThreeForms)
{
    const std::string before = drawing.contents();
    const ScopedFault fault(failing("QeDbTransactionManager::endTransaction"));
    EXPECT_EQ(clear(), kInjectedResult);
    EXPECT_EQ(drawing.contents(), before);
    EXPECT_EQ(transactions().numActiveTransactions(), 0);
}

TEST_F(StoredCoordinateSystem, OuterTransactionKeepsTheClearing)
{
    ASSERT_NE(transactions().startTransaction(), nullptr);
    EXPECT_EQ(clear(), Qeapp::eOk);
    EXPECT_EQ(transactions().numActiveTransactions(), 1);
    ASSERT_EQ(transactions().endTransaction(), Qeapp::eOk);
    expectCleared();
}

TEST_F(StoredCoordinateSystem, AbortedOuterTransactionUndoesTheClearing)
{
    const std::string before = drawing.contents();
    ASSERT_NE(transactions().startTransaction(), nullptr);
    EXPECT_EQ(clear(), Qeapp::eOk);
    ASSERT_EQ(transactions().abortTransaction(), Qeapp::eOk);
    EXPECT_EQ(drawing.contents(), before);
}

TEST_F(StoredCoordinateSystem, FailedClearingKeepsEarlierChangesOfAnOuterTransaction)
{
    ASSERT_NE(transactions().startTransaction(), nullptr);
    drawing.withXrecord({{300, L"written before"}}, L"OTHER");
    {
        const ScopedFault fault(failing("QeDbGeoData::setCoordinateSystem"));
        EXPECT_EQ(clear(), kInjectedResult);
    }
    EXPECT_EQ(transactions().numActiveTransactions(), 1);
    ASSERT_EQ(transactions().endTransaction(), Qeapp::eOk);
    EXPECT_EQ(drawing.xrecord(L"OTHER"), (Items{{300, L"written before"}}));
    EXPECT_EQ(drawing.geoDataText(), L"text");
    EXPECT_EQ(drawing.xrecord(), (Items{{1071, 1}}));
}

TEST_F(StoredCoordinateSystem, ObjectThatIsOpenForReadKeepsAllThreeForms)
{
    const std::string before = drawing.contents();
    QeDbObjectId id;
    ASSERT_EQ(qedbGetGeoDataObjId(drawing.database(), id), Qeapp::eOk);
    Orvel::HostObject<QeDbGeoData> reader;
    ASSERT_EQ(reader.open(id, QeDb::kForRead), Qeapp::eOk);
    EXPECT_EQ(clear(), Qeapp::eOpenForRead);
    reader.reset();
    EXPECT_EQ(drawing.contents(), before);
}

} // namespace
} // namespace Tests
