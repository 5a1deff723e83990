#include "support/coordsys_test.h"

namespace {

using namespace Tests;
using Embedded::FaultInjection;
using Embedded::ScopedFault;

class ReadSystem : public CoordsysTest {
protected:
    SystemHolder definition;
    bool known = true;

    Qeapp::ErrorStatus read() { return Cs::GetCoordinateSystem(definition.put(), &known, database(), &status); }
    Qeapp::ErrorStatus readWithoutFlag()
    {
        return Cs::GetCoordinateSystem(definition.put(), nullptr, database(), &status);
    }
    void storeDatumAndEllipsoid()
    {
        drawing.withGeoData(joinTexts({serializedText(catalogDatum(L"EPSG:6258").get(), false),
                                       serializedText(catalogEllipsoid(L"EPSG:7019").get(), false)}));
    }
};

TEST_F(ReadSystem, EmptyDrawing_GivesNoDefinition)
{
    EXPECT_EQ(read(), Qeapp::eOk);
    EXPECT_FALSE(definition);
    EXPECT_FALSE(known);
    EXPECT_EQ(status, 0);
}

TEST_F(ReadSystem, EmptyDrawing_IsNotLookedUpInTheCatalog)
{
    FaultInjection::watch();
    EXPECT_EQ(read(), Qeapp::eOk);
    EXPECT_EQ(countCalls(kLoadSystem), 0U);
}

TEST_F(ReadSystem, EmptyDrawing_SetsTheCallersPointerToNull)
{
    const SystemHolder other = catalogSystem(L"EPSG:2263");
    auto* callers = other.get();
    EXPECT_EQ(Cs::GetCoordinateSystem(callers, nullptr, database()), Qeapp::eOk);
    EXPECT_EQ(callers, nullptr);
}

TEST_F(ReadSystem, CatalogSystem_IsKnown)
{
    storeSystem(L"EPSG:25832");
    known = false;
    EXPECT_EQ(read(), Qeapp::eOk);
    EXPECT_EQ(describe(definition.get()), L"system EPSG:25832");
    EXPECT_TRUE(known);
    EXPECT_EQ(status, 0);
}

TEST_F(ReadSystem, SystemOutsideTheCatalog_IsReturnedAsUnknown)
{
    drawing.withGeoData(serializedText(userSystem().get()));
    EXPECT_EQ(read(), Qeapp::eOk);
    EXPECT_EQ(describe(definition.get()), L"system MINE:1");
    EXPECT_FALSE(known);
}

TEST_F(ReadSystem, SystemOutsideTheCatalog_ReportsStatus35)
{
    drawing.withGeoData(serializedText(userSystem().get()));
    ASSERT_EQ(read(), Qeapp::eOk);
    EXPECT_EQ(status, 35);
}

TEST_F(ReadSystem, NullFlag_SkipsTheCatalog)
{
    drawing.withGeoData(serializedText(userSystem().get()));
    FaultInjection::watch();
    EXPECT_EQ(readWithoutFlag(), Qeapp::eOk);
    EXPECT_EQ(describe(definition.get()), L"system MINE:1");
    EXPECT_EQ(countCalls(kLoadSystem), 0U);
    EXPECT_EQ(status, 0);
}

TEST_F(ReadSystem, NullStatus_IsAllowed)
{
    storeSystem(L"EPSG:25832");
    known = false;
    EXPECT_EQ(Cs::GetCoordinateSystem(definition.put(), &known, database()), Qeapp::eOk);
    EXPECT_EQ(describe(definition.get()), L"system EPSG:25832");
    EXPECT_TRUE(known);
}

TEST_F(ReadSystem, DatumAndEllipsoidBeforeTheSystem_AreSkipped)
{
    drawing.withGeoData(joinTexts({serializedText(catalogDatum(L"EPSG:6258").get(), false),
                                   serializedText(catalogEllipsoid(L"EPSG:7019").get(), false),
                                   serializedText(catalogSystem(L"EPSG:25832").get(), false)}));
    EXPECT_EQ(read(), Qeapp::eOk);
    EXPECT_EQ(describe(definition.get()), L"system EPSG:25832");
    EXPECT_TRUE(known);
}

TEST_F(ReadSystem, SeveralSystems_GiveTheFirst)
{
    drawing.withGeoData(
        joinTexts({serializedText(catalogSystem(L"EPSG:2263").get()), serializedText(userSystem().get())}));
    EXPECT_EQ(read(), Qeapp::eOk);
    EXPECT_EQ(describe(definition.get()), L"system EPSG:2263");
}

TEST_F(ReadSystem, ArrayWithoutASystem_GivesNoDefinition)
{
    storeDatumAndEllipsoid();
    EXPECT_EQ(readWithoutFlag(), Qeapp::eOk);
    EXPECT_FALSE(definition);
    EXPECT_EQ(status, 0);
}

TEST_F(ReadSystem, ArrayWithoutASystem_IsLookedUpWithoutACodeAndUnknown)
{
    storeDatumAndEllipsoid();
    FaultInjection::watch();
    EXPECT_EQ(read(), Qeapp::eOk);
    EXPECT_EQ(countCalls(kLoadSystem), 1U);
    EXPECT_FALSE(definition);
    EXPECT_FALSE(known);
    EXPECT_EQ(status, 35);
}

TEST_F(ReadSystem, LegacyCodeWithXrecord_GivesTheStoredSystem)
{
    drawing.withLegacyCode(L"MINE:1").withGeoData(L"ignored");
    storeXrecord(userSystem());
    EXPECT_EQ(read(), Qeapp::eOk);
    EXPECT_EQ(describe(definition.get()), L"system MINE:1");
    EXPECT_FALSE(known);
    EXPECT_EQ(status, 35);
}

TEST_F(ReadSystem, LegacyCodeWithoutXrecord_GivesTheCatalogsSystem)
{
    drawing.withLegacyCode(L"EPSG:2263");
    EXPECT_EQ(read(), Qeapp::eOk);
    EXPECT_EQ(describe(definition.get()), L"system EPSG:2263");
    EXPECT_TRUE(known);
}

TEST_F(ReadSystem, LegacyCodeWithoutADefinition_ReturnsNotApplicable)
{
    drawing.withLegacyCode(L"MINE:1");
    EXPECT_EQ(read(), Qeapp::eNotApplicable);
    EXPECT_FALSE(definition);
    EXPECT_FALSE(known);
    EXPECT_EQ(status, 77);
}

TEST_F(ReadSystem, FailedReading_SetsTheCallersPointerToNull)
{
    drawing.withLegacyCode(L"MINE:1");
    const SystemHolder other = catalogSystem(L"EPSG:2263");
    auto* callers = other.get();
    EXPECT_EQ(Cs::GetCoordinateSystem(callers, nullptr, database()), Qeapp::eNotApplicable);
    EXPECT_EQ(callers, nullptr);
}

TEST_F(ReadSystem, UnreadableText_ReturnsInvalidInputAndLeavesTheStatus)
{
    drawing.withGeoData(L"no definition at all");
    EXPECT_EQ(read(), Qeapp::eInvalidInput);
    EXPECT_FALSE(definition);
    EXPECT_FALSE(known);
    EXPECT_EQ(status, 77);
}

TEST_F(ReadSystem, CallThatSucceedsWithoutAnArray_ReturnsInvalidInput)
{
    storeSystem(L"EPSG:25832");
    const ScopedFault fault({.call = "DefinitionStream::Deserialize_s", .code = 0});
    EXPECT_EQ(read(), Qeapp::eInvalidInput);
    EXPECT_FALSE(definition);
    EXPECT_FALSE(known);
    EXPECT_EQ(status, 52);
}

TEST_F(ReadSystem, HostFailure_IsReturnedWithStatus52)
{
    storeSystem(L"EPSG:25832");
    const ScopedFault fault({.call = "qedbOpenQeDbObject", .code = 31});
    EXPECT_EQ(read(), 31);
    EXPECT_FALSE(known);
    EXPECT_EQ(status, 52);
}

TEST_F(ReadSystem, DeprecatedSystem_IsKnown)
{
    storeSystem(L"EPSG:3785");
    known = false;
    EXPECT_EQ(read(), Qeapp::eOk);
    EXPECT_TRUE(known);
}

TEST_F(ReadSystem, CatalogWithoutMemory_ReturnsOutOfMemoryAndTheDefinition)
{
    storeSystem(L"EPSG:25832");
    const ScopedFault fault({.call = kLoadSystem, .code = 57});
    EXPECT_EQ(read(), Qeapp::eOutOfMemory);
    EXPECT_EQ(describe(definition.get()), L"system EPSG:25832");
    EXPECT_FALSE(known);
}

TEST_F(ReadSystem, OtherCatalogFailure_ReturnsInvalidInputAndTheDefinition)
{
    storeSystem(L"EPSG:25832");
    const ScopedFault fault({.call = kLoadSystem, .code = 46});
    EXPECT_EQ(read(), Qeapp::eInvalidInput);
    EXPECT_EQ(describe(definition.get()), L"system EPSG:25832");
    EXPECT_FALSE(known);
}

// The reading succeeds first and reports 0. The failed check overwrites that neither with 52 nor with the library's
// status.
TEST_F(ReadSystem, FailedCatalogCheck_KeepsTheStatusOfTheReading)
{
    storeSystem(L"EPSG:25832");
    for (const int code : {10, 46, 52, 57}) {
        status = kUntouched;
        const ScopedFault fault({.call = kLoadSystem, .code = code});
        EXPECT_NE(read(), Qeapp::eOk) << code;
        EXPECT_EQ(status, 0) << code;
    }
}

TEST_F(ReadSystem, CatalogThatReturnsNotFound_Succeeds)
{
    storeSystem(L"EPSG:25832");
    const ScopedFault fault({.call = kLoadSystem, .code = 35});
    EXPECT_EQ(read(), Qeapp::eOk);
    EXPECT_EQ(describe(definition.get()), L"system EPSG:25832");
    EXPECT_FALSE(known);
    EXPECT_EQ(status, 35);
}

TEST_F(ReadSystem, FailedCatalogCheckOfALegacyCode_ReturnsTheDefinition)
{
    drawing.withLegacyCode(L"EPSG:2263");
    const ScopedFault fault({.call = kLoadSystem, .occurrence = 2, .code = 44});
    EXPECT_EQ(read(), Qeapp::eInvalidInput);
    EXPECT_EQ(describe(definition.get()), L"system EPSG:2263");
}

TEST_F(ReadSystem, SystemWhoseCodeCannotBeRead_IsReturnedAsUnknown)
{
    storeSystem(L"EPSG:25832");
    {
        const ScopedFault fault({.call = "DefinitionBase::GetCode", .code = {}});
        EXPECT_EQ(read(), Qeapp::eOk);
    }
    EXPECT_EQ(describe(definition.get()), L"system EPSG:25832");
    EXPECT_FALSE(known);
    EXPECT_EQ(status, 35);
}

TEST_F(ReadSystem, ArrayThatCannotBeFilled_IsReleased)
{
    drawing.withLegacyCode(L"EPSG:25832");
    const ScopedFault fault({.call = "DefinitionBaseArray::Add", .code = {}});
    EXPECT_EQ(read(), Qeapp::eInvalidInput);
    EXPECT_FALSE(definition);
}

TEST_F(ReadSystem, SystemInAnArrayThatCannotBeFilled_IsNotReturned)
{
    drawing.withLegacyCode(L"EPSG:25832");
    storeXrecord(catalogSystem(L"EPSG:25832"));
    Embedded::FaultInjection::watch();
    ASSERT_EQ(read(), Qeapp::eOk);
    const std::size_t additions = countCalls("DefinitionBaseArray::Add");
    const ScopedFault last({.call = "DefinitionBaseArray::Add", .occurrence = additions, .code = 57});
    EXPECT_EQ(read(), Qeapp::eInvalidInput);
    EXPECT_FALSE(definition);
}

} // namespace
