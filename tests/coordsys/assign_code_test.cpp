#include "support/coordsys_test.h"

namespace {

using namespace Tests;
using Embedded::ScopedFault;

class AssignCode : public CoordsysTest {
protected:
    void SetUp() override { ASSERT_EQ(reactor.add(), Qeapp::eOk); }
};

TEST_F(AssignCode, CatalogCode_WritesTheCatalogsDefinition)
{
    EXPECT_EQ(assign(L"EPSG:25832"), Qeapp::eOk);
    EXPECT_EQ(drawing.geoDataText(), serializedText(catalogSystem(L"EPSG:25832").get()));
    EXPECT_EQ(status, 0);
}

TEST_F(AssignCode, CatalogCode_IsAnnouncedBeforeAndAfterTheRemoval)
{
    ASSERT_EQ(assign(L"EPSG:25832"), Qeapp::eOk);
    EXPECT_EQ(log, assignmentNotices(L"EPSG:25832"));
}

TEST_F(AssignCode, CodeInAnotherCase_IsAnnouncedInTheCatalogsSpelling)
{
    ASSERT_EQ(assign(L"epsg:25832"), Qeapp::eOk);
    EXPECT_EQ(log, assignmentNotices(L"EPSG:25832"));
}

TEST_F(AssignCode, NullStatus_IsAllowed)
{
    EXPECT_EQ(Cs::SetCoordinateSystem(L"EPSG:25832", database()), Qeapp::eOk);
    EXPECT_EQ(log, assignmentNotices(L"EPSG:25832"));
}

TEST_F(AssignCode, NullCode_RemovesTheSystemAndAnnouncesAnEmptyName)
{
    storeSystem(L"EPSG:25832");
    EXPECT_EQ(assign(static_cast<const wchar_t*>(nullptr)), Qeapp::eOk);
    EXPECT_EQ(log, assignmentNotices(L""));
    EXPECT_EQ(drawing.geoDataText(), L"");
    EXPECT_EQ(status, 0);
}

TEST_F(AssignCode, EmptyCode_RemovesTheSystemAndAnnouncesAnEmptyName)
{
    storeSystem(L"EPSG:25832");
    EXPECT_EQ(assign(L""), Qeapp::eOk);
    EXPECT_EQ(log, assignmentNotices(L""));
    EXPECT_EQ(drawing.geoDataText(), L"");
    EXPECT_EQ(status, 0);
}

TEST_F(AssignCode, EmptyCode_IsNotLookedUpInTheCatalog)
{
    Embedded::FaultInjection::watch();
    EXPECT_EQ(assign(L""), Qeapp::eOk);
    EXPECT_EQ(countCalls("CoordinateReferenceSystemDefinition::Load"), 0U);
}

TEST_F(AssignCode, UnknownCode_ReturnsInvalidInputAndStatus52)
{
    EXPECT_EQ(assign(L"MINE:1"), Qeapp::eInvalidInput);
    EXPECT_EQ(status, 52);
}

TEST_F(AssignCode, UnknownCode_CallsNoReactorAndChangesNothing)
{
    storeSystem(L"EPSG:25832");
    drawing.withLegacyCode(L"EPSG:25832");
    const auto before = drawing.contents();
    EXPECT_EQ(assign(L"MINE:1"), Qeapp::eInvalidInput);
    EXPECT_EQ(log, Notices());
    EXPECT_EQ(drawing.contents(), before);
}

TEST_F(AssignCode, UnknownCodeWithNullStatus_ReturnsInvalidInput)
{
    EXPECT_EQ(Cs::SetCoordinateSystem(L"MINE:1", database()), Qeapp::eInvalidInput);
}

TEST_F(AssignCode, CatalogFailure_ReturnsInvalidInputAndStatus52)
{
    for (const int code : {35, 46, 57}) {
        status = kUntouched;
        const ScopedFault fault({.call = "CoordinateReferenceSystemDefinition::Load", .code = code});
        EXPECT_EQ(assign(L"EPSG:25832"), Qeapp::eInvalidInput) << code;
        EXPECT_EQ(status, 52) << code;
    }
    EXPECT_EQ(log, Notices());
}

TEST_F(AssignCode, CatalogThatSucceedsWithoutADefinition_FailsAndChangesNothing)
{
    storeSystem(L"EPSG:2263");
    const auto before = drawing.contents();
    const ScopedFault fault({.call = "CoordinateReferenceSystemDefinition::Load", .code = 0});
    EXPECT_EQ(assign(L"EPSG:25832"), Qeapp::eInvalidInput);
    EXPECT_EQ(status, 52);
    EXPECT_EQ(log, Notices());
    EXPECT_EQ(drawing.contents(), before);
}

TEST_F(AssignCode, VetoOfAKnownCode_ReportsStatusZero)
{
    reactor.answer = [](const Notice&) { return false; };
    EXPECT_EQ(assign(L"EPSG:25832"), Qeapp::eVetoed);
    EXPECT_EQ(status, 0);
}

TEST_F(AssignCode, HostFailureForAKnownCode_ReportsStatusZero)
{
    const ScopedFault fault({.call = "QeDbGeoData::postToDb", .code = 6});
    EXPECT_EQ(assign(L"EPSG:25832"), 6);
    EXPECT_EQ(status, 0);
}

TEST_F(AssignCode, LibraryFailureForAKnownCode_ReportsStatusZero)
{
    const ScopedFault fault({.call = "DefinitionStream::Serialize_s", .code = 42});
    EXPECT_EQ(assign(L"EPSG:25832"), Qeapp::eInvalidInput);
    EXPECT_EQ(status, 0);
}

TEST_F(AssignCode, FailedRemovalForAnEmptyCode_ReportsStatusZero)
{
    const ScopedFault fault({.call = "QeDbTransactionManager::startTransaction", .code = {}});
    EXPECT_EQ(assign(L""), 8);
    EXPECT_EQ(status, 0);
}

} // namespace
