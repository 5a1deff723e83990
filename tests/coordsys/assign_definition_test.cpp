#include "support/coordsys_test.h"

namespace {

using namespace Tests;
using Embedded::ScopedFault;

class AssignDefinition : public CoordsysTest {
protected:
    void SetUp() override { ASSERT_EQ(reactor.add(), Qeapp::eOk); }

    Qeapp::ErrorStatus assignNull()
    {
        return Cs::SetCoordinateSystem(static_cast<const Library::CoordinateReferenceSystemDefinition*>(nullptr),
                                       database(), &status);
    }
};

TEST_F(AssignDefinition, Assignment_WritesTheTextWithDatumAndEllipsoid)
{
    const SystemHolder definition = catalogSystem(L"EPSG:25832");
    EXPECT_EQ(assign(definition), Qeapp::eOk);
    EXPECT_EQ(drawing.geoDataText(), serializedText(definition.get(), true));
    EXPECT_TRUE(drawing.geoDataIsInModelSpace());
}

TEST_F(AssignDefinition, Assignment_WritesNoOlderForm)
{
    ASSERT_EQ(assign(catalogSystem(L"EPSG:25832")), Qeapp::eOk);
    EXPECT_EQ(drawing.legacyChain(), std::nullopt);
    EXPECT_EQ(drawing.xrecord(), std::nullopt);
}

TEST_F(AssignDefinition, Assignment_ReportsStatusZero)
{
    ASSERT_EQ(assign(catalogSystem(L"EPSG:25832")), Qeapp::eOk);
    EXPECT_EQ(status, 0);
}

TEST_F(AssignDefinition, NullStatus_IsAllowed)
{
    EXPECT_EQ(Cs::SetCoordinateSystem(catalogSystem(L"EPSG:25832").get(), database()), Qeapp::eOk);
    EXPECT_EQ(describeStoredSystem(), L"system EPSG:25832");
}

TEST_F(AssignDefinition, Assignment_LeavesTheCallersDefinitionUnchanged)
{
    const SystemHolder definition = catalogSystem(L"EPSG:25832");
    const std::wstring before = serializedText(definition.get());
    ASSERT_EQ(assign(definition), Qeapp::eOk);
    EXPECT_EQ(serializedText(definition.get()), before);
}

TEST_F(AssignDefinition, Assignment_AnnouncesTheCodeBeforeAndAfterTheRemoval)
{
    ASSERT_EQ(assign(catalogSystem(L"EPSG:25832")), Qeapp::eOk);
    EXPECT_EQ(log, assignmentNotices(L"EPSG:25832"));
}

TEST_F(AssignDefinition, EveryNotice_PassesTheDrawing)
{
    ASSERT_EQ(assign(catalogSystem(L"EPSG:25832")), Qeapp::eOk);
    EXPECT_EQ(reactor.databases, std::vector<QeDbDatabase*>(4, database()));
}

TEST_F(AssignDefinition, EveryNotice_ReachesAllReactorsBeforeTheNext)
{
    RecordingReactor second(log, "B");
    ASSERT_EQ(second.add(), Qeapp::eOk);
    ASSERT_EQ(assign(catalogSystem(L"EPSG:25832")), Qeapp::eOk);
    const Notices first = assignmentNotices(L"EPSG:25832", "A");
    const Notices other = assignmentNotices(L"EPSG:25832", "B");
    EXPECT_EQ(log, Notices({first[0], other[0], first[1], other[1], first[2], other[2], first[3], other[3]}));
}

TEST_F(AssignDefinition, EveryNotice_ComesWhenTheDrawingIsInTheAnnouncedState)
{
    storeSystem(L"EPSG:2263");
    std::vector<std::wstring> stored;
    reactor.action = [&](const Notice&) { stored.push_back(describeStoredSystem()); };
    ASSERT_EQ(assign(catalogSystem(L"EPSG:25832")), Qeapp::eOk);
    EXPECT_EQ(stored, Texts({L"system EPSG:2263", L"system EPSG:2263", L"none", L"system EPSG:25832"}));
}

TEST_F(AssignDefinition, UserDefinedSystem_IsStoredAndAnnouncedUnderItsCode)
{
    EXPECT_EQ(assign(userSystem()), Qeapp::eOk);
    EXPECT_EQ(log, assignmentNotices(L"MINE:1"));
    EXPECT_EQ(describeStoredSystem(), L"system MINE:1");
    EXPECT_EQ(status, 0);
}

TEST_F(AssignDefinition, DefinitionWhoseCodeCannotBeRead_IsAnnouncedWithAnEmptyName)
{
    const SystemHolder definition = catalogSystem(L"EPSG:25832");
    {
        const ScopedFault fault({.call = "DefinitionBase::GetCode", .code = {}});
        EXPECT_EQ(assign(definition), Qeapp::eOk);
    }
    EXPECT_EQ(log, assignmentNotices(L""));
    EXPECT_EQ(describeStoredSystem(), L"system EPSG:25832");
    EXPECT_EQ(status, 0);
}

TEST_F(AssignDefinition, NullDefinition_AnnouncesAnEmptyNameBeforeAndAfterTheRemoval)
{
    storeSystem(L"EPSG:25832");
    EXPECT_EQ(assignNull(), Qeapp::eOk);
    EXPECT_EQ(log, assignmentNotices(L""));
}

TEST_F(AssignDefinition, NullDefinition_RemovesEveryStoredForm)
{
    storeSystem(L"EPSG:25832");
    drawing.withLegacyCode(L"EPSG:2263").withXrecord({{300, L"anything"}});
    EXPECT_EQ(assignNull(), Qeapp::eOk);
    EXPECT_EQ(drawing.geoDataText(), L"");
    EXPECT_EQ(drawing.legacyChain(), std::nullopt);
    EXPECT_EQ(drawing.xrecord(), std::nullopt);
    EXPECT_EQ(status, 0);
}

TEST_F(AssignDefinition, NullDefinition_WritesNothingAfterTheRemoval)
{
    storeSystem(L"EPSG:25832");
    Embedded::FaultInjection::watch();
    EXPECT_EQ(assignNull(), Qeapp::eOk);
    Embedded::FaultInjection::disarm();
    EXPECT_EQ(countCalls("QeDbGeoData::setCoordinateSystem"), 1U);
}

TEST_F(AssignDefinition, NullDefinition_CreatesNoGeoData)
{
    EXPECT_EQ(assignNull(), Qeapp::eOk);
    EXPECT_EQ(drawing.geoDataText(), std::nullopt);
}

TEST_F(AssignDefinition, SecondAssignment_ReplacesTheTextInTheSameObject)
{
    ASSERT_EQ(assign(catalogSystem(L"EPSG:25832")), Qeapp::eOk);
    const auto objects = countOccurrences(drawing.contents(), "\nobject ");
    EXPECT_EQ(assign(catalogSystem(L"EPSG:2263")), Qeapp::eOk);
    EXPECT_EQ(describeStoredSystem(), L"system EPSG:2263");
    EXPECT_EQ(countOccurrences(drawing.contents(), "\nobject "), objects);
}

TEST_F(AssignDefinition, RepeatedAssignment_LeavesAnEqualDrawing)
{
    ASSERT_EQ(assign(catalogSystem(L"EPSG:25832")), Qeapp::eOk);
    const auto before = drawing.contents();
    EXPECT_EQ(assign(catalogSystem(L"EPSG:25832")), Qeapp::eOk);
    EXPECT_EQ(drawing.contents(), before);
}

TEST_F(AssignDefinition, AssignmentToALegacyDrawing_RemovesTheOlderForms)
{
    drawing.withLegacyCode(L"EPSG:2263");
    storeXrecord(catalogSystem(L"EPSG:2263"));
    EXPECT_EQ(assign(catalogSystem(L"EPSG:25832")), Qeapp::eOk);
    EXPECT_EQ(drawing.legacyChain(), std::nullopt);
    EXPECT_EQ(drawing.xrecord(), std::nullopt);
    EXPECT_EQ(describeStoredSystem(), L"system EPSG:25832");
    EXPECT_TRUE(drawing.hasRegisteredApplication());
}

TEST_F(AssignDefinition, AssignmentInAnAbortedTransaction_IsUndone)
{
    drawing.withLegacyCode(L"EPSG:2263");
    const auto before = drawing.contents();
    {
        const Orvel::Transaction outer(database()->transactionManager());
        ASSERT_EQ(assign(catalogSystem(L"EPSG:25832")), Qeapp::eOk);
        ASSERT_EQ(describeStoredSystem(), L"system EPSG:25832");
    }
    EXPECT_EQ(drawing.contents(), before);
}

TEST_F(AssignDefinition, AssignmentInACommittedTransaction_IsKept)
{
    Orvel::Transaction outer(database()->transactionManager());
    ASSERT_EQ(assign(catalogSystem(L"EPSG:25832")), Qeapp::eOk);
    ASSERT_EQ(outer.commit(), Qeapp::eOk);
    EXPECT_EQ(describeStoredSystem(), L"system EPSG:25832");
}

TEST_F(AssignDefinition, VetoOfTheNewCode_ChangesNothing)
{
    storeSystem(L"EPSG:2263");
    drawing.withLegacyCode(L"EPSG:2263");
    const auto before = drawing.contents();
    reactor.answer = [](const Notice&) { return false; };
    EXPECT_EQ(assign(catalogSystem(L"EPSG:25832")), 325);
    EXPECT_EQ(drawing.contents(), before);
    EXPECT_EQ(log, Notices({{Event::asked, L"EPSG:25832"}, {Event::vetoed, L"EPSG:25832"}}));
    EXPECT_EQ(status, 52);
}

TEST_F(AssignDefinition, VetoOfTheRemoval_ChangesNothing)
{
    storeSystem(L"EPSG:2263");
    drawing.withLegacyCode(L"EPSG:2263");
    const auto before = drawing.contents();
    reactor.answer = [](const Notice& notice) { return notice.name.has_value(); };
    EXPECT_EQ(assign(catalogSystem(L"EPSG:25832")), Qeapp::eVetoed);
    EXPECT_EQ(drawing.contents(), before);
    EXPECT_EQ(log,
              Notices({{Event::asked, L"EPSG:25832"}, {Event::asked, std::nullopt}, {Event::vetoed, std::nullopt}}));
    EXPECT_EQ(status, 52);
}

TEST_F(AssignDefinition, VetoOfTheEmptyName_ChangesNothing)
{
    storeSystem(L"EPSG:2263");
    const auto before = drawing.contents();
    reactor.answer = [](const Notice& notice) { return notice.name != L""; };
    EXPECT_EQ(assignNull(), Qeapp::eVetoed);
    EXPECT_EQ(drawing.contents(), before);
    EXPECT_EQ(log, Notices({{Event::asked, L""}, {Event::vetoed, L""}}));
}

} // namespace
