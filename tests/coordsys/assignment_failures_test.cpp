#include "support/coordsys_test.h"

namespace {

using namespace Tests;
using Embedded::ScopedFault;

const Notices kNoticesOfTheRemoval{
    {Event::asked, L"EPSG:25832"}, {Event::asked, std::nullopt}, {Event::changed, std::nullopt}};
const Notices kQuestions{{Event::asked, L"EPSG:25832"}, {Event::asked, std::nullopt}};

/// Assignments of EPSG:25832 that fail.
class AssignmentFailures : public CoordsysTest {
protected:
    SystemHolder definition = catalogSystem(L"EPSG:25832");

    void SetUp() override { ASSERT_EQ(reactor.add(), Qeapp::eOk); }

    Qeapp::ErrorStatus assignWithFailing(const char* call, int code, std::size_t occurrence = 1)
    {
        const ScopedFault fault({.call = call, .occurrence = occurrence, .code = code});
        return assign(definition);
    }
};

TEST_F(AssignmentFailures, FailedRemoval_ChangesNothing)
{
    storeSystem(L"EPSG:2263");
    const auto before = drawing.contents();
    EXPECT_EQ(assignWithFailing("QeDbGeoData::setCoordinateSystem", 999), 999);
    EXPECT_EQ(drawing.contents(), before);
}

TEST_F(AssignmentFailures, FailedRemoval_SendsNoNoticeAfterTheQuestions)
{
    storeSystem(L"EPSG:2263");
    EXPECT_EQ(assignWithFailing("QeDbGeoData::setCoordinateSystem", 999), 999);
    EXPECT_EQ(log, kQuestions);
}

TEST_F(AssignmentFailures, FailedRemoval_ReportsStatus52)
{
    EXPECT_EQ(assignWithFailing("QeDbDatabase::getRegAppTable", 31), 31);
    EXPECT_EQ(status, 52);
}

TEST_F(AssignmentFailures, FailingStartOfTheTransaction_Returns8AndChangesNothing)
{
    const auto before = drawing.contents();
    EXPECT_EQ(assignWithFailing("QeDbTransactionManager::startTransaction", 6), 8);
    EXPECT_EQ(drawing.contents(), before);
    EXPECT_EQ(log, kQuestions);
    EXPECT_EQ(status, 52);
}

TEST_F(AssignmentFailures, FailedWrite_LeavesTheDrawingWithoutASystem)
{
    storeSystem(L"EPSG:2263");
    drawing.withLegacyCode(L"EPSG:2263");
    EXPECT_EQ(assignWithFailing("QeDbGeoData::setCoordinateSystem", 999, 2), 999);
    EXPECT_EQ(drawing.geoDataText(), L"");
    EXPECT_EQ(drawing.legacyChain(), std::nullopt);
}

TEST_F(AssignmentFailures, FailedWrite_NotifiesReactorsOfTheRemovalOnly)
{
    storeSystem(L"EPSG:2263");
    EXPECT_EQ(assignWithFailing("QeDbGeoData::setCoordinateSystem", 999, 2), 999);
    EXPECT_EQ(log, kNoticesOfTheRemoval);
}

TEST_F(AssignmentFailures, FailedWriteAfterTheSerialization_ReportsStatus52)
{
    storeSystem(L"EPSG:2263");
    EXPECT_EQ(assignWithFailing("QeDbGeoData::setCoordinateSystem", 999, 2), 999);
    EXPECT_EQ(status, 52);
}

TEST_F(AssignmentFailures, FailedSerialization_ReturnsInvalidInputAndLeavesTheStatus)
{
    EXPECT_EQ(assignWithFailing("DefinitionStream::Serialize_s", 42), Qeapp::eInvalidInput);
    EXPECT_EQ(status, 77);
}

TEST_F(AssignmentFailures, SerializationWithoutMemory_ReturnsInvalidInput)
{
    EXPECT_EQ(assignWithFailing("DefinitionStream::Serialize_s", 57), Qeapp::eInvalidInput);
    EXPECT_EQ(status, 77);
}

TEST_F(AssignmentFailures, FailedSerialization_LeavesTheDrawingWithoutASystem)
{
    storeSystem(L"EPSG:2263");
    EXPECT_EQ(assignWithFailing("DefinitionStream::Serialize_s", 42), Qeapp::eInvalidInput);
    EXPECT_EQ(drawing.geoDataText(), L"");
    EXPECT_EQ(log, kNoticesOfTheRemoval);
}

TEST_F(AssignmentFailures, FailedCreationOfGeoData_LeavesNoGeoData)
{
    for (const char* const call : {"QeDbSymbolUtilitiesServices::blockModelSpaceId",
                                   "QeDbGeoData::setBlockTableRecordId", "QeDbGeoData::postToDb"}) {
        log.clear();
        status = kUntouched;
        EXPECT_EQ(assignWithFailing(call, 999), 999) << call;
        EXPECT_EQ(drawing.geoDataText(), std::nullopt) << call;
        EXPECT_EQ(log, kNoticesOfTheRemoval) << call;
        EXPECT_EQ(status, 52) << call;
    }
}

TEST_F(AssignmentFailures, GeoDataThatCannotBeAllocated_ThrowsBadAlloc)
{
    const ScopedFault fault(
        {.call = "qeHeapAlloc", .occurrence = 2, .code = {}}); // the first is for the registered application
    EXPECT_THROW(static_cast<void>(assign(definition)), std::bad_alloc);
    EXPECT_EQ(drawing.geoDataText(), std::nullopt);
    EXPECT_EQ(log, kNoticesOfTheRemoval);
}

TEST_F(AssignmentFailures, VetoOfTheRemoval_VetoesEveryAssignment)
{
    reactor.answer = [](const Notice& notice) { return notice.name.has_value(); };
    for (const wchar_t* const code : {L"EPSG:25832", L"EPSG:2263", L""})
        EXPECT_EQ(assign(code), Qeapp::eVetoed);
    EXPECT_EQ(drawing.geoDataText(), std::nullopt);
}

} // namespace
