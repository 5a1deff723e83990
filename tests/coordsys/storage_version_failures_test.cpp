#include <new>

#include "storage/unusual_definitions.h"
#include "storage_version_test.h"

namespace Tests {
namespace {

using Embedded::FaultInjection;
using Embedded::ScopedFault;

/// A result that no host call returns by itself.
constexpr int kInjectedResult = 999;

class StorageVersionFailures : public StorageVersionTest {
protected:
    Qeapp::ErrorStatus applyWithFailing(const char* call, int code, int version, std::size_t occurrence = 1)
    {
        const ScopedFault fault({.call = call, .occurrence = occurrence, .code = code});
        const Qeapp::ErrorStatus result = apply(version);
        EXPECT_EQ(FaultInjection::failedCalls(), 1U) << call;
        return result;
    }
    /// Makes the call fail and expects its result, the status and an unchanged drawing.
    void expectUnchanged(const char* call, int version, int expectedStatus)
    {
        const auto before = drawing.contents();
        status = kUntouched;
        EXPECT_EQ(applyWithFailing(call, kInjectedResult, version), kInjectedResult) << call;
        EXPECT_EQ(status, expectedStatus) << call;
        EXPECT_EQ(drawing.contents(), before) << call;
    }
};

TEST_F(StorageVersionFailures, NullDatabase_Returns124AndLeavesTheStatus)
{
    EXPECT_EQ(Cs::ApplyCoordinateSystemStorageVersion(nullptr, QeDb::kOldestDwg, &status), 124);
    EXPECT_EQ(status, kUntouched);
}

// The code has no definition. The library's status, 35, is not reported, and the local status of the reading stays
// unset.
TEST_F(StorageVersionFailures, UnknownLegacyCode_ReturnsNotApplicableAndChangesNothing)
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

TEST_F(StorageVersionFailures, UnreadableText_ReturnsInvalidInputAndChangesNothing)
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

// The reading reports 52 to the function's local status, so the caller's status is unchanged.
TEST_F(StorageVersionFailures, HostFailureWhileReading_IsReturnedAndLeavesTheStatus)
{
    storeSystem(L"EPSG:25832");
    for (const int version : {29, 30})
        expectUnchanged("qedbOpenQeDbObject", version, kUntouched);
}

TEST_F(StorageVersionFailures, CatalogCheckWithoutMemory_ReturnsOutOfMemoryAndChangesNothing)
{
    storeSystem(L"EPSG:25832");
    const auto before = drawing.contents();
    EXPECT_EQ(applyWithFailing("CoordinateReferenceSystemDefinition::Load", 57, 29), Qeapp::eOutOfMemory);
    EXPECT_EQ(drawing.contents(), before);
}

TEST_F(StorageVersionFailures, FailingCatalogCheck_ReturnsInvalidInputAndChangesNothing)
{
    storeSystem(L"EPSG:25832");
    const auto before = drawing.contents();
    EXPECT_EQ(applyWithFailing("CoordinateReferenceSystemDefinition::Load", 46, 30), Qeapp::eInvalidInput);
    EXPECT_EQ(drawing.contents(), before);
}

TEST_F(StorageVersionFailures, FailingStartOfTheTransaction_Returns8AndChangesNothing)
{
    storeAllForms(L"EPSG:25832");
    const auto before = drawing.contents();
    for (const int version : {29, 30}) {
        status = kUntouched;
        EXPECT_EQ(applyWithFailing("QeDbTransactionManager::startTransaction", kInjectedResult, version), 8);
        EXPECT_EQ(status, 52);
        EXPECT_EQ(drawing.contents(), before);
    }
}

TEST_F(StorageVersionFailures, FailedRemoval_IsReturnedWithStatus52AndChangesNothing)
{
    storeAllForms(L"EPSG:25832");
    for (const char* const call : {"QeDbDatabase::getRegAppTable", "QeDbObject::setXData", "QeDbDictionary::remove",
                                   "QeDbGeoData::setCoordinateSystem", "QeDbTransactionManager::endTransaction"}) {
        for (const int version : {29, 30})
            expectUnchanged(call, version, 52);
    }
}

// The last library status is 35, from the catalog check.
TEST_F(StorageVersionFailures, FailedRemovalOfASystemOutsideTheCatalog_LeavesTheStatus)
{
    storeText(userSystem(L"MINE:1"));
    expectUnchanged("QeDbGeoData::setCoordinateSystem", 29, kUntouched);
}

TEST_F(StorageVersionFailures, TextThatCannotBeWritten_LeavesNoForm)
{
    storeAllForms(L"EPSG:25832");
    EXPECT_EQ(applyWithFailing("QeDbGeoData::setCoordinateSystem", kInjectedResult, 30, 2), kInjectedResult);
    EXPECT_EQ(status, 52);
    expectNoForm();
}

TEST_F(StorageVersionFailures, TextThatCannotBeSerialized_ReturnsInvalidInputAndLeavesTheStatus)
{
    for (const int code : {42, 57}) {
        storeAllForms(L"EPSG:25832");
        status = kUntouched;
        EXPECT_EQ(applyWithFailing("DefinitionStream::Serialize_s", code, 30), Qeapp::eInvalidInput);
        EXPECT_EQ(status, kUntouched);
        expectNoForm();
        drawing = Drawing();
    }
}

// Writing the legacy forms begins with status 52, so a failure leaves the caller's status.
TEST_F(StorageVersionFailures, CodeThatCannotBeRead_ReturnsInvalidInputAndLeavesNoForm)
{
    storeSystem(L"EPSG:25832");
    EXPECT_EQ(applyWithFailing("DefinitionBase::GetCode", 52, 29, 2), Qeapp::eInvalidInput);
    EXPECT_EQ(status, kUntouched);
    expectNoForm();
}

// Readers of the legacy record treat a dot as no code.
TEST_F(StorageVersionFailures, CodeOfADot_IsRefusedForTheLegacyForms)
{
    storeText(userSystem(L"."));
    EXPECT_EQ(apply(29), 3);
    EXPECT_EQ(status, kUntouched);
    expectNoForm();
}

TEST_F(StorageVersionFailures, CodeOfADot_IsStoredAsText)
{
    storeText(userSystem(L"."));
    EXPECT_EQ(apply(30), Qeapp::eOk);
    expectText(userSystem(L"."));
}

TEST_F(StorageVersionFailures, LegacyRecordThatCannotBeWritten_LeavesNoForm)
{
    storeSystem(L"EPSG:25832");
    EXPECT_EQ(applyWithFailing("QeDbObject::setXData", kInjectedResult, 29, 2), kInjectedResult);
    EXPECT_EQ(status, kUntouched);
    expectNoForm();
}

TEST_F(StorageVersionFailures, XrecordThatCannotBeWritten_LeavesOnlyTheLegacyCode)
{
    for (const char* const call : {"QeDbXrecord::setFromRbChain", "QeDbDictionary::setAt"}) {
        storeSystem(L"EPSG:25832");
        status = kUntouched;
        EXPECT_EQ(applyWithFailing(call, kInjectedResult, 29), kInjectedResult) << call;
        EXPECT_EQ(status, kUntouched) << call;
        EXPECT_EQ(drawing.legacyChain(), (Items{{1001, L"KTN_PROJECTION"}, {1000, L"EPSG:25832"}}));
        EXPECT_EQ(drawing.xrecord(), std::nullopt) << call;
        EXPECT_EQ(drawing.geoDataText(), L"") << call;
        drawing = Drawing();
    }
}

TEST_F(StorageVersionFailures, SystemTooLongForPacking_Returns7)
{
    const SystemHolder system = UserSystem{.name = varied(1100)}.makeSystem();
    storeText(system);
    EXPECT_EQ(apply(29), Qeapp::eInvalidResbuf);
    EXPECT_EQ(status, kUntouched);
    EXPECT_EQ(drawing.xrecord(), std::nullopt);
}

TEST_F(StorageVersionFailures, SystemTooLongForPacking_IsStoredAsText)
{
    const SystemHolder system = UserSystem{.name = varied(1100)}.makeSystem();
    storeText(system);
    EXPECT_EQ(apply(30), Qeapp::eOk);
    expectText(system);
}

// The second look-up is the one of the writing. When it fails, the drawing's own definition is written.
TEST_F(StorageVersionFailures, CatalogFailureWhileWriting_KeepsTheDrawingsOwnDefinition)
{
    const SystemHolder own = userSystem(L"EPSG:25832");
    for (const int code : {35, 46, 57, 0}) { // 0: success without a definition
        storeText(own);
        EXPECT_EQ(applyWithFailing("CoordinateReferenceSystemDefinition::Load", code, 29, 2), Qeapp::eOk);
        EXPECT_EQ(status, 0);
        expectLegacyForms(L"EPSG:25832", own);
        drawing = Drawing();
    }
}

TEST_F(StorageVersionFailures, WktThatCannotBeCreated_IsOmitted)
{
    storeSystem(L"EPSG:25832");
    EXPECT_EQ(applyWithFailing("FormatConverter::DefinitionToWkt_s", 42, 29), Qeapp::eOk);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(drawing.xrecord(), expectedXrecord(catalogSystem(L"EPSG:25832")));
    EXPECT_EQ(drawing.geoDataText(), L"");
}

TEST_F(StorageVersionFailures, WktThatCannotBeWritten_IsOmitted)
{
    storeSystem(L"EPSG:25832");
    EXPECT_EQ(applyWithFailing("QeDbGeoData::setCoordinateSystem", kInjectedResult, 29, 2), Qeapp::eOk);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(drawing.legacyChain(), (Items{{1001, L"KTN_PROJECTION"}, {1000, L"EPSG:25832"}}));
    EXPECT_EQ(drawing.geoDataText(), L"");
}

} // namespace
} // namespace Tests
