#include <new>

#include "storage/definition_xrecord.h"
#include "support/coordsys_test.h"

namespace {

using namespace Tests;
using Embedded::FaultInjection;
using Embedded::ScopedFault;

class ReadDefinitionsFailures : public CoordsysTest {
protected:
    ArrayHolder definitions;

    Qeapp::ErrorStatus read() { return Cs::GetCoordinateSystem(definitions.put(), database(), &status); }
    void giveLegacySystem()
    {
        drawing.withLegacyCode(L"EPSG:25832");
        ASSERT_EQ(Orvel::WriteCsDefinitionXrecord(catalogSystem(L"EPSG:25832").get(), database()), Qeapp::eOk);
    }
    /// Reads with the n-th last addition to an array failing; the library makes additions of its own before.
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

TEST_F(ReadDefinitionsFailures, GeoDataThatCannotBeOpened_PassesTheHostResultOn)
{
    storeSystem(L"EPSG:25832");
    const ScopedFault fault({.call = "qedbOpenQeDbObject", .code = 31});
    EXPECT_EQ(read(), 31);
    EXPECT_EQ(status, 52);
}

TEST_F(ReadDefinitionsFailures, GeoDataThatIsOpenForWrite_PassesTheHostResultOn)
{
    storeSystem(L"EPSG:25832");
    QeDbObjectId id;
    ASSERT_EQ(qedbGetGeoDataObjId(database(), id), Qeapp::eOk);
    Orvel::HostObject<QeDbGeoData> writer;
    ASSERT_EQ(writer.open(id, QeDb::kForWrite), Qeapp::eOk);
    EXPECT_EQ(read(), Qeapp::eOpenForWrite);
    EXPECT_EQ(status, 52);
}

TEST_F(ReadDefinitionsFailures, AHostFailureLeavesTheArrayPointerAsItWas)
{
    storeSystem(L"EPSG:25832");
    ASSERT_EQ(read(), Qeapp::eOk);
    auto* definition = definitions.get();
    const ScopedFault fault({.call = "qedbOpenQeDbObject", .code = 31});
    EXPECT_EQ(Cs::GetCoordinateSystem(definition, database(), &status), 31);
    EXPECT_EQ(definition, definitions.get());
}

TEST_F(ReadDefinitionsFailures, GeoDataThatCannotBeFound_ReadsAsNone)
{
    storeSystem(L"EPSG:25832");
    const ScopedFault fault({.call = "qedbGetGeoDataObjId", .code = 3});
    EXPECT_EQ(read(), Qeapp::eOk);
    EXPECT_EQ(describe(definitions), Texts());
}

TEST_F(ReadDefinitionsFailures, ATextThatTheLibraryCannotRead_IsInvalidInput)
{
    storeSystem(L"EPSG:25832");
    const ScopedFault fault({.call = "DefinitionStream::Deserialize_s", .code = 43});
    EXPECT_EQ(read(), Qeapp::eInvalidInput);
    EXPECT_EQ(status, 77);
    EXPECT_FALSE(definitions);
}

TEST_F(ReadDefinitionsFailures, ATextThatTheLibraryHasNoMemoryFor_IsInvalidInputToo)
{
    storeSystem(L"EPSG:25832");
    const ScopedFault fault({.call = "DefinitionStream::Deserialize_s", .code = 57});
    EXPECT_EQ(read(), Qeapp::eInvalidInput);
    EXPECT_EQ(status, 77);
}

// An exception has no result and no library status.
TEST_F(ReadDefinitionsFailures, AnExceptionOnTheWay_ReportsStatusZero)
{
    storeSystem(L"EPSG:25832");
    const ScopedFault fault({.call = "DefinitionStream::Deserialize_s", .throws = true});
    EXPECT_THROW(static_cast<void>(read()), std::bad_alloc); // there is no result
    EXPECT_EQ(status, 0);
    EXPECT_FALSE(definitions);
}

TEST_F(ReadDefinitionsFailures, NoMemoryForAnEmptyArray_IsOutOfMemory)
{
    const ScopedFault fault({.call = "DefinitionBaseArray::CreateInstance", .code = 57});
    EXPECT_EQ(read(), Qeapp::eOutOfMemory);
    EXPECT_EQ(status, 77);
    EXPECT_FALSE(definitions);
}

TEST_F(ReadDefinitionsFailures, AnotherFailureOfTheEmptyArray_IsInvalidInput)
{
    const ScopedFault fault({.call = "DefinitionBaseArray::CreateInstance", .code = 52});
    EXPECT_EQ(read(), Qeapp::eInvalidInput);
    EXPECT_EQ(status, 77);
}

TEST_F(ReadDefinitionsFailures, NoMemoryForTheArrayOfALegacyCode_IsInvalidInput)
{
    drawing.withLegacyCode(L"EPSG:25832");
    const ScopedFault fault({.call = "DefinitionBaseArray::CreateInstance", .code = 57});
    EXPECT_EQ(read(), Qeapp::eInvalidInput);
    EXPECT_EQ(status, 77);
    EXPECT_FALSE(definitions);
}

TEST_F(ReadDefinitionsFailures, AnyFailureOfTheCatalogForALegacyCode_IsNotApplicable)
{
    drawing.withLegacyCode(L"EPSG:25832");
    const ScopedFault fault({.call = "CoordinateReferenceSystemDefinition::Load", .code = 57});
    EXPECT_EQ(read(), Qeapp::eNotApplicable);
    EXPECT_EQ(status, 77);
    EXPECT_EQ(describe(definitions), Texts());
}

TEST_F(ReadDefinitionsFailures, AFailureToMakeOrReadAnArrayLeavesTheArrayPointerAsItWas)
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

TEST_F(ReadDefinitionsFailures, CatalogThatGivesNothingDespiteSuccess_IsNotApplicable)
{
    drawing.withLegacyCode(L"EPSG:25832");
    const ScopedFault fault({.call = "CoordinateReferenceSystemDefinition::Load", .code = 0});
    EXPECT_EQ(read(), Qeapp::eNotApplicable);
    EXPECT_EQ(status, 52);
    EXPECT_EQ(describe(definitions), Texts());
}

// Without a legacy code and with one; in both the caller's pointer is not to be taken for an array.
TEST_F(ReadDefinitionsFailures, ArrayThatIsNotThereDespiteSuccess_IsInvalidInput)
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

TEST_F(ReadDefinitionsFailures, TheCatalogsSystemThatCannotBeAdded_IsInvalidInput)
{
    drawing.withLegacyCode(L"EPSG:25832");
    const ScopedFault fault({.call = "DefinitionBaseArray::Add", .code = 57});
    EXPECT_EQ(read(), Qeapp::eInvalidInput);
    EXPECT_EQ(status, 77);
    ASSERT_TRUE(definitions);
    EXPECT_EQ(definitions->GetCount(), 0);
}

TEST_F(ReadDefinitionsFailures, AStoredSystemThatCannotBeAdded_LeavesAnEmptyArray)
{
    giveLegacySystem();
    EXPECT_EQ(readWithAdditionFailing(2), Qeapp::eInvalidInput);
    EXPECT_EQ(status, 77);
    ASSERT_TRUE(definitions);
    EXPECT_EQ(definitions->GetCount(), 0);
}

TEST_F(ReadDefinitionsFailures, AStoredDatumThatCannotBeAdded_LeavesTheSystemInTheArray)
{
    giveLegacySystem();
    EXPECT_EQ(readWithAdditionFailing(1), Qeapp::eInvalidInput);
    EXPECT_EQ(status, 77);
    EXPECT_EQ(describe(definitions), Texts{L"system EPSG:25832"});
}

TEST_F(ReadDefinitionsFailures, AStoredEllipsoidThatCannotBeAdded_LeavesSystemAndDatumInTheArray)
{
    giveLegacySystem();
    EXPECT_EQ(readWithAdditionFailing(0), Qeapp::eInvalidInput);
    EXPECT_EQ(status, 77);
    EXPECT_EQ(describe(definitions), Texts({L"system EPSG:25832", L"datum EPSG:6258"}));
}

TEST_F(ReadDefinitionsFailures, ALegacyRecordThatCannotBeRead_ReadsAsNone)
{
    storeSystem(L"EPSG:25832");
    drawing.withLegacyCode(L"EPSG:2263");
    for (const char* const call : {"QeDbDatabase::getNamedObjectsDictionary", "QeDbObject::xData"}) {
        const ScopedFault fault({.call = call, .code = {}});
        EXPECT_EQ(read(), Qeapp::eOk) << call;
        EXPECT_EQ(describe(definitions).at(0), L"system EPSG:25832") << call;
    }
}

TEST_F(ReadDefinitionsFailures, AnXrecordThatCannotBeRead_MeansThatTheCatalogAnswers)
{
    giveLegacySystem();
    for (const char* const call : {"QeDbDictionary::getAt", "qedbOpenQeDbObject", "QeDbXrecord::rbChain"}) {
        const ScopedFault fault({.call = call, .code = {}});
        EXPECT_EQ(read(), Qeapp::eOk) << call;
        EXPECT_EQ(describe(definitions), Texts{L"system EPSG:25832"}) << call;
    }
}

TEST_F(ReadDefinitionsFailures, AnXrecordThatCannotBeReadForAUserDefinedSystem_IsNotApplicable)
{
    drawing.withLegacyCode(L"MINE:1");
    ASSERT_EQ(Orvel::WriteCsDefinitionXrecord(userSystem().get(), database()), Qeapp::eOk);
    const ScopedFault fault({.call = "QeDbXrecord::rbChain", .code = {}});
    EXPECT_EQ(read(), Qeapp::eNotApplicable);
    EXPECT_EQ(status, 77);
}

} // namespace
