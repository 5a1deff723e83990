#include <new>

#include "storage/unusual_definitions.h"
#include "storage_version_test.h"

namespace Tests {
namespace {

using Embedded::FaultInjection;
using Embedded::ScopedFault;

/// A result that no host call returns by itself.
constexpr int kPlanned = 999;

class StorageVersionFailures : public StorageVersionTest {
protected:
    Qeapp::ErrorStatus applyWithFailing(const char* call, int code, int version, std::size_t occurrence = 1)
    {
        const ScopedFault fault({.call = call, .occurrence = occurrence, .code = code});
        const Qeapp::ErrorStatus result = apply(version);
        EXPECT_EQ(FaultInjection::failedCalls(), 1U) << call;
        return result;
    }
    /// Expects that the operation fails while it reads or clears, and that the drawing is unchanged.
    void expectUnchanged(const char* call, int version, int expectedStatus)
    {
        const auto before = drawing.contents();
        status = kUntouched;
        EXPECT_EQ(applyWithFailing(call, kPlanned, version), kPlanned) << call;
        EXPECT_EQ(status, expectedStatus) << call;
        EXPECT_EQ(drawing.contents(), before) << call;
    }
};

TEST_F(StorageVersionFailures, NoDatabase_IsResult124AndLeavesTheStatus)
{
    EXPECT_EQ(Cs::ApplyCoordinateSystemStorageVersion(nullptr, QeDb::kOldestDwg, &status), 124);
    EXPECT_EQ(status, kUntouched);
}

// The code's definition was looked for in vain: the library's status, 35, is not told, and the reading's own local
// status stays unset.
TEST_F(StorageVersionFailures, UnknownLegacyCode_IsNotApplicableAndChangesNothing)
{
    drawing.withLegacyCode(L"MINE:1");
    const auto before = drawing.contents();
    for (const int version : {29, 30}) {
        status = kUntouched;
        EXPECT_EQ(apply(version), Qeapp::eNotApplicable);
        EXPECT_EQ(status, 52);
        EXPECT_EQ(drawing.contents(), before);
    }
}

TEST_F(StorageVersionFailures, UnreadableText_IsInvalidInputAndChangesNothing)
{
    drawing.withGeoData(L"PROJCS[\"not a serialized text\"]");
    const auto before = drawing.contents();
    for (const int version : {29, 30}) {
        status = kUntouched;
        EXPECT_EQ(apply(version), Qeapp::eInvalidInput);
        EXPECT_EQ(status, 52);
        EXPECT_EQ(drawing.contents(), before);
    }
}

// An exception has no result and no library status.
TEST_F(StorageVersionFailures, ExceptionWhileReading_ReportsStatusZeroAndChangesNothing)
{
    storeSystem(L"EPSG:25832");
    const auto before = drawing.contents();
    for (const int version : {29, 30}) {
        status = kUntouched;
        const ScopedFault fault({.call = "DefinitionStream::Deserialize_s", .throws = true});
        EXPECT_THROW(static_cast<void>(apply(version)), std::bad_alloc); // there is no result
        EXPECT_EQ(status, 0);
        EXPECT_EQ(drawing.contents(), before);
    }
}

// The reading reports 52 into the status that this function tracks, so the caller's is unchanged.
TEST_F(StorageVersionFailures, HostFailureWhileReading_IsPassedOnAndLeavesTheStatus)
{
    storeSystem(L"EPSG:25832");
    for (const int version : {29, 30})
        expectUnchanged("qedbOpenQeDbObject", version, kUntouched);
}

TEST_F(StorageVersionFailures, NoMemoryInTheCatalogCheck_IsOutOfMemoryAndChangesNothing)
{
    storeSystem(L"EPSG:25832");
    const auto before = drawing.contents();
    EXPECT_EQ(applyWithFailing("CoordinateReferenceSystemDefinition::Load", 57, 29), Qeapp::eOutOfMemory);
    EXPECT_EQ(drawing.contents(), before);
}

TEST_F(StorageVersionFailures, FailingCatalogCheck_IsInvalidInputAndChangesNothing)
{
    storeSystem(L"EPSG:25832");
    const auto before = drawing.contents();
    EXPECT_EQ(applyWithFailing("CoordinateReferenceSystemDefinition::Load", 46, 30), Qeapp::eInvalidInput);
    EXPECT_EQ(drawing.contents(), before);
}

TEST_F(StorageVersionFailures, NoTransaction_IsResult8AndChangesNothing)
{
    giveAllForms(L"EPSG:25832");
    const auto before = drawing.contents();
    for (const int version : {29, 30}) {
        status = kUntouched;
        EXPECT_EQ(applyWithFailing("QeDbTransactionManager::startTransaction", kPlanned, version), 8);
        EXPECT_EQ(status, 52);
        EXPECT_EQ(drawing.contents(), before);
    }
}

TEST_F(StorageVersionFailures, FailedRemoval_IsPassedOnWithStatus52AndChangesNothing)
{
    giveAllForms(L"EPSG:25832");
    for (const char* const call : {"QeDbDatabase::getRegAppTable", "QeDbObject::setXData", "QeDbDictionary::remove",
                                   "QeDbGeoData::setCoordinateSystem", "QeDbTransactionManager::endTransaction"}) {
        for (const int version : {29, 30})
            expectUnchanged(call, version, 52);
    }
}

// The last library status is the 35 of the catalog check.
TEST_F(StorageVersionFailures, FailedRemovalOfASystemUnknownToTheCatalog_LeavesTheStatus)
{
    giveText(userSystem(L"MINE:1"));
    expectUnchanged("QeDbGeoData::setCoordinateSystem", 29, kUntouched);
}

TEST_F(StorageVersionFailures, TextThatCannotBeWritten_LeavesTheDrawingWithoutAForm)
{
    giveAllForms(L"EPSG:25832");
    EXPECT_EQ(applyWithFailing("QeDbGeoData::setCoordinateSystem", kPlanned, 30, 2), kPlanned);
    EXPECT_EQ(status, 52);
    expectNoForm();
}

TEST_F(StorageVersionFailures, TextThatCannotBeSerialized_IsInvalidInputAndLeavesTheStatus)
{
    for (const int code : {42, 57}) {
        giveAllForms(L"EPSG:25832");
        status = kUntouched;
        EXPECT_EQ(applyWithFailing("DefinitionStream::Serialize_s", code, 30), Qeapp::eInvalidInput);
        EXPECT_EQ(status, kUntouched);
        expectNoForm();
        drawing = Drawing();
    }
}

// Writing the legacy forms begins with status 52, so a failure does not change the caller's.
TEST_F(StorageVersionFailures, CodeThatCannotBeRead_IsInvalidInputAndLeavesTheDrawingWithoutAForm)
{
    storeSystem(L"EPSG:25832");
    EXPECT_EQ(applyWithFailing("DefinitionBase::GetCode", 52, 29, 2), Qeapp::eInvalidInput);
    EXPECT_EQ(status, kUntouched);
    expectNoForm();
}

// Readers of the legacy record treat that code as none.
TEST_F(StorageVersionFailures, CodeThatReadersTakeForNone_IsInvalidInputInTheLegacyForms)
{
    giveText(userSystem(L"."));
    EXPECT_EQ(apply(29), 3);
    EXPECT_EQ(status, kUntouched);
    expectNoForm();
}

TEST_F(StorageVersionFailures, CodeThatReadersTakeForNone_CanBeStoredAsText)
{
    giveText(userSystem(L"."));
    EXPECT_EQ(apply(30), Qeapp::eOk);
    expectText(userSystem(L"."));
}

TEST_F(StorageVersionFailures, LegacyRecordThatCannotBeWritten_LeavesTheDrawingWithoutAForm)
{
    storeSystem(L"EPSG:25832");
    EXPECT_EQ(applyWithFailing("QeDbObject::setXData", kPlanned, 29, 2), kPlanned);
    EXPECT_EQ(status, kUntouched);
    expectNoForm();
}

TEST_F(StorageVersionFailures, XrecordThatCannotBeWritten_LeavesTheLegacyCodeAlone)
{
    for (const char* const call : {"QeDbXrecord::setFromRbChain", "QeDbDictionary::setAt"}) {
        storeSystem(L"EPSG:25832");
        status = kUntouched;
        EXPECT_EQ(applyWithFailing(call, kPlanned, 29), kPlanned) << call;
        EXPECT_EQ(status, kUntouched) << call;
        EXPECT_EQ(drawing.legacyChain(), (Items{{1001, L"KTN_PROJECTION"}, {1000, L"EPSG:25832"}}));
        EXPECT_EQ(drawing.xrecord(), std::nullopt) << call;
        EXPECT_EQ(drawing.geoDataText(), L"") << call;
        drawing = Drawing();
    }
}

TEST_F(StorageVersionFailures, SystemTooLongForPacking_IsResult7)
{
    UserSystem system;
    system.name = varied(1100);
    giveText(system.system());
    EXPECT_EQ(apply(29), Qeapp::eInvalidResbuf);
    EXPECT_EQ(status, kUntouched);
    EXPECT_EQ(drawing.xrecord(), std::nullopt);
}

TEST_F(StorageVersionFailures, SystemTooLongForPacking_CanBeStoredAsText)
{
    UserSystem system;
    system.name = varied(1100);
    giveText(system.system());
    EXPECT_EQ(apply(30), Qeapp::eOk);
    expectText(system.system());
}

// From the reading's check, the writing's choice and on: without the catalog the drawing's own definition is written.
TEST_F(StorageVersionFailures, CatalogThatFailsOnWriting_LeavesTheDrawingsOwnDefinition)
{
    const SystemHolder own = userSystem(L"EPSG:25832");
    for (const int code : {35, 46, 57, 0}) { // 0: a success that gives no definition
        giveText(own);
        EXPECT_EQ(applyWithFailing("CoordinateReferenceSystemDefinition::Load", code, 29, 2), Qeapp::eOk);
        EXPECT_EQ(status, 0);
        expectLegacyForms(L"EPSG:25832", own);
        drawing = Drawing();
    }
}

TEST_F(StorageVersionFailures, WktThatCannotBeMade_IsNoFailure)
{
    storeSystem(L"EPSG:25832");
    EXPECT_EQ(applyWithFailing("FormatConverter::DefinitionToWkt_s", 42, 29), Qeapp::eOk);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(drawing.xrecord(), xrecordOf(catalogSystem(L"EPSG:25832")));
    EXPECT_EQ(drawing.geoDataText(), L"");
}

TEST_F(StorageVersionFailures, WktThatCannotBeWritten_IsNoFailure)
{
    storeSystem(L"EPSG:25832");
    EXPECT_EQ(applyWithFailing("QeDbGeoData::setCoordinateSystem", kPlanned, 29, 2), Qeapp::eOk);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(drawing.legacyChain(), (Items{{1001, L"KTN_PROJECTION"}, {1000, L"EPSG:25832"}}));
    EXPECT_EQ(drawing.geoDataText(), L"");
}

} // namespace
} // namespace Tests
