#include <new>

#include "support/coordsys_test.h"

namespace {

using namespace Tests;
using Embedded::FaultInjection;
using Embedded::ScopedFault;

class ReadDefinitionsFailures : public CoordsysTest {
protected:
    ArrayHolder definitions;

    Qeapp::ErrorStatus read() { return Cs::GetCoordinateSystem(definitions.put(), database(), &status); }
    void storeLegacySystem()
    {
        drawing.withLegacyCode(L"EPSG:25832");
        storeXrecord(catalogSystem(L"EPSG:25832"));
    }
    /// Reads while one of the last additions to an array fails. The library makes the earlier additions itself.
    Qeapp::ErrorStatus readWithAdditionFailing(std::size_t fromTheEnd)
    {
        FaultInjection::watch();
        EXPECT_EQ(read(), Qeapp::eOk);
        const std::size_t additions = countCalls("DefinitionBaseArray::Add");
        const ScopedFault fault({.call = "DefinitionBaseArray::Add", .occurrence = additions - fromTheEnd, .code = 57});
        status = kUntouched;
        return read();
    }
};

TEST_F(ReadDefinitionsFailures, GeoDataThatCannotBeOpened_ReturnsTheHostResult)
{
    storeSystem(L"EPSG:25832");
    const ScopedFault fault({.call = "qedbOpenQeDbObject", .code = 31});
    EXPECT_EQ(read(), 31);
    EXPECT_EQ(status, 52);
}

TEST_F(ReadDefinitionsFailures, GeoDataThatIsOpenForWrite_ReturnsTheHostResult)
{
    storeSystem(L"EPSG:25832");
    QeDbObjectId id;
    ASSERT_EQ(qedbGetGeoDataObjId(database(), id), Qeapp::eOk);
    Orvel::HostObject<QeDbGeoData> writer;
    ASSERT_EQ(writer.open(id, QeDb::kForWrite), Qeapp::eOk);
    EXPECT_EQ(read(), Qeapp::eOpenForWrite);
    EXPECT_EQ(status, 52);
}

TEST_F(ReadDefinitionsFailures, HostFailure_LeavesTheArrayPointer)
{
    storeSystem(L"EPSG:25832");
    ASSERT_EQ(read(), Qeapp::eOk);
    auto* definition = definitions.get();
    const ScopedFault fault({.call = "qedbOpenQeDbObject", .code = 31});
    EXPECT_EQ(Cs::GetCoordinateSystem(definition, database(), &status), 31);
    EXPECT_EQ(definition, definitions.get());
}

TEST_F(ReadDefinitionsFailures, GeoDataThatCannotBeFound_GivesAnEmptyArray)
{
    storeSystem(L"EPSG:25832");
    const ScopedFault fault({.call = "qedbGetGeoDataObjId", .code = 3});
    EXPECT_EQ(read(), Qeapp::eOk);
    EXPECT_EQ(describe(definitions), Texts());
}

TEST_F(ReadDefinitionsFailures, TextThatTheLibraryCannotRead_ReturnsInvalidInput)
{
    storeSystem(L"EPSG:25832");
    const ScopedFault fault({.call = "DefinitionStream::Deserialize_s", .code = 43});
    EXPECT_EQ(read(), Qeapp::eInvalidInput);
    EXPECT_EQ(status, 77);
    EXPECT_FALSE(definitions);
}

TEST_F(ReadDefinitionsFailures, TextThatNeedsTooMuchMemory_ReturnsInvalidInput)
{
    storeSystem(L"EPSG:25832");
    const ScopedFault fault({.call = "DefinitionStream::Deserialize_s", .code = 57});
    EXPECT_EQ(read(), Qeapp::eInvalidInput);
    EXPECT_EQ(status, 77);
}

// An exception has no result and no library status.
TEST_F(ReadDefinitionsFailures, Exception_ReportsStatusZero)
{
    storeSystem(L"EPSG:25832");
    const ScopedFault fault({.call = "DefinitionStream::Deserialize_s", .throws = true});
    EXPECT_THROW(static_cast<void>(read()), std::bad_alloc); // there is no result
    EXPECT_EQ(status, 0);
    EXPECT_FALSE(definitions);
}

TEST_F(ReadDefinitionsFailures, EmptyArrayWithoutMemory_ReturnsOutOfMemory)
{
    const ScopedFault fault({.call = "DefinitionBaseArray::CreateInstance", .code = 57});
    EXPECT_EQ(read(), Qeapp::eOutOfMemory);
    EXPECT_EQ(status, 77);
    EXPECT_FALSE(definitions);
}

TEST_F(ReadDefinitionsFailures, EmptyArrayThatFailsOtherwise_ReturnsInvalidInput)
{
    const ScopedFault fault({.call = "DefinitionBaseArray::CreateInstance", .code = 52});
    EXPECT_EQ(read(), Qeapp::eInvalidInput);
    EXPECT_EQ(status, 77);
}

TEST_F(ReadDefinitionsFailures, ArrayForALegacyCodeWithoutMemory_ReturnsInvalidInput)
{
    drawing.withLegacyCode(L"EPSG:25832");
    const ScopedFault fault({.call = "DefinitionBaseArray::CreateInstance", .code = 57});
    EXPECT_EQ(read(), Qeapp::eInvalidInput);
    EXPECT_EQ(status, 77);
    EXPECT_FALSE(definitions);
}

TEST_F(ReadDefinitionsFailures, CatalogFailureForALegacyCode_ReturnsNotApplicable)
{
    drawing.withLegacyCode(L"EPSG:25832");
    const ScopedFault fault({.call = "CoordinateReferenceSystemDefinition::Load", .code = 57});
    EXPECT_EQ(read(), Qeapp::eNotApplicable);
    EXPECT_EQ(status, 77);
    EXPECT_EQ(describe(definitions), Texts());
}

TEST_F(ReadDefinitionsFailures, FailureToCreateOrReadAnArray_LeavesTheArrayPointer)
{
    storeSystem(L"EPSG:25832");
    ASSERT_EQ(read(), Qeapp::eOk);
    auto* array = definitions.get();
    const auto expectUntouched = [&](const char* call) {
        const ScopedFault fault({.call = call, .code = 43});
        EXPECT_EQ(Cs::GetCoordinateSystem(array, database(), &status), Qeapp::eInvalidInput) << call;
        EXPECT_EQ(array, definitions.get()) << call;
    };
    expectUntouched("DefinitionStream::Deserialize_s");
    drawing.withLegacyCode(L"EPSG:25832");
    expectUntouched("DefinitionBaseArray::CreateInstance");
}

TEST_F(ReadDefinitionsFailures, CatalogThatSucceedsWithoutADefinition_ReturnsNotApplicable)
{
    drawing.withLegacyCode(L"EPSG:25832");
    const ScopedFault fault({.call = "CoordinateReferenceSystemDefinition::Load", .code = 0});
    EXPECT_EQ(read(), Qeapp::eNotApplicable);
    EXPECT_EQ(status, 52);
    EXPECT_EQ(describe(definitions), Texts());
}

// With and without a legacy code, the function must not use the missing array.
TEST_F(ReadDefinitionsFailures, CallThatSucceedsWithoutAnArray_ReturnsInvalidInput)
{
    for (const wchar_t* const code : {L"", L"EPSG:25832"}) {
        drawing.withLegacyCode(code);
        status = kUntouched;
        const ScopedFault fault({.call = "DefinitionBaseArray::CreateInstance", .code = 0});
        EXPECT_EQ(read(), Qeapp::eInvalidInput);
        EXPECT_EQ(status, 52);
        EXPECT_FALSE(definitions);
    }
}

TEST_F(ReadDefinitionsFailures, CatalogSystemThatCannotBeAdded_ReturnsInvalidInput)
{
    drawing.withLegacyCode(L"EPSG:25832");
    const ScopedFault fault({.call = "DefinitionBaseArray::Add", .code = 57});
    EXPECT_EQ(read(), Qeapp::eInvalidInput);
    EXPECT_EQ(status, 77);
    ASSERT_TRUE(definitions);
    EXPECT_EQ(definitions->GetCount(), 0);
}

TEST_F(ReadDefinitionsFailures, StoredSystemThatCannotBeAdded_GivesAnEmptyArray)
{
    storeLegacySystem();
    EXPECT_EQ(readWithAdditionFailing(2), Qeapp::eInvalidInput);
    EXPECT_EQ(status, 77);
    ASSERT_TRUE(definitions);
    EXPECT_EQ(definitions->GetCount(), 0);
}

TEST_F(ReadDefinitionsFailures, StoredDatumThatCannotBeAdded_GivesOnlyTheSystem)
{
    storeLegacySystem();
    EXPECT_EQ(readWithAdditionFailing(1), Qeapp::eInvalidInput);
    EXPECT_EQ(status, 77);
    EXPECT_EQ(describe(definitions), Texts{L"system EPSG:25832"});
}

TEST_F(ReadDefinitionsFailures, StoredEllipsoidThatCannotBeAdded_GivesSystemAndDatum)
{
    storeLegacySystem();
    EXPECT_EQ(readWithAdditionFailing(0), Qeapp::eInvalidInput);
    EXPECT_EQ(status, 77);
    EXPECT_EQ(describe(definitions), Texts({L"system EPSG:25832", L"datum EPSG:6258"}));
}

TEST_F(ReadDefinitionsFailures, LegacyRecordThatCannotBeRead_IsIgnored)
{
    storeSystem(L"EPSG:25832");
    drawing.withLegacyCode(L"EPSG:2263");
    for (const char* const call : {"QeDbDatabase::getNamedObjectsDictionary", "QeDbObject::xData"}) {
        const ScopedFault fault({.call = call, .code = {}});
        EXPECT_EQ(read(), Qeapp::eOk) << call;
        EXPECT_EQ(describe(definitions).at(0), L"system EPSG:25832") << call;
    }
}

TEST_F(ReadDefinitionsFailures, XrecordThatCannotBeRead_GivesTheCatalogsSystem)
{
    storeLegacySystem();
    for (const char* const call : {"QeDbDictionary::getAt", "qedbOpenQeDbObject", "QeDbXrecord::rbChain"}) {
        const ScopedFault fault({.call = call, .code = {}});
        EXPECT_EQ(read(), Qeapp::eOk) << call;
        EXPECT_EQ(describe(definitions), Texts{L"system EPSG:25832"}) << call;
    }
}

TEST_F(ReadDefinitionsFailures, XrecordOfAUserDefinedSystemThatCannotBeRead_ReturnsNotApplicable)
{
    drawing.withLegacyCode(L"MINE:1");
    storeXrecord(userSystem());
    const ScopedFault fault({.call = "QeDbXrecord::rbChain", .code = {}});
    EXPECT_EQ(read(), Qeapp::eNotApplicable);
    EXPECT_EQ(status, 77);
}

} // namespace
