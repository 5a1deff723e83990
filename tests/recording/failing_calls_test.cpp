// A call that fills its outputs but reports a failure counts as failed.
#include "recording/recording_test.h"
#include "storage/definition_xrecord.h"

namespace Tests {
namespace {

constexpr auto kOlderVersion = static_cast<QeDb::QeDbDwgVersion>(27);

/// A system without a datum.
const Definition kEllipsoidal{.code = L"MINE:1", .ellipsoidCode = L"MINE:3"};

class FailingCalls : public RecordingTest {
protected:
    Qeapp::ErrorStatus writeXrecord(const Definition& definition = kSystem)
    {
        return Orvel::WriteCsDefinitionXrecord(system(definition).get(), database());
    }
    bool hasNoXrecord() const { return !drawing.xrecord().has_value(); }
};

TEST_F(FailingCalls, NoFailure_ReadsTheStoredDefinitions)
{
    storeXrecord(L"MINE:1", {kSystem, kDatum, kEllipsoid});
    EXPECT_EQ(read(), (Texts{L"MINE:1", L"MINE:2", L"MINE:3"}));
    EXPECT_EQ(result, Qeapp::eOk);
}

TEST_F(FailingCalls, FailureWhileReadingStoredDefinitions_GivesNone)
{
    storeXrecord(L"MINE:1", {kSystem, kDatum, kEllipsoid});
    for (const char* const call :
         {"DefinitionBase::GetCode", "CoordinateReferenceSystemDefinition::GetKind",
          "CoordinateReferenceSystemDefinition::GetDatumCode", "DatumDefinition::GetEllipsoidCode",
          "DefinitionStream::CreateInstance", "DefinitionStream::GetDefinitions"}) {
        fail(call);
        EXPECT_EQ(read(), Texts()) << call;
        EXPECT_EQ(result, Qeapp::eNotApplicable) << call;
        answers().statuses.clear();
    }
}

TEST_F(FailingCalls, FailureWhileReadingAnEllipsoidalSystem_GivesNone)
{
    storeXrecord(L"MINE:1", {kEllipsoidal, kEllipsoid});
    ASSERT_EQ(read(), (Texts{L"MINE:1", L"MINE:3"}));
    fail("CoordinateReferenceSystemDefinition::GetEllipsoidCode");
    EXPECT_EQ(read(), Texts());
    EXPECT_EQ(result, Qeapp::eNotApplicable);
}

TEST_F(FailingCalls, CatalogFailure_GivesNoDefinition)
{
    answers().catalog[L"MINE:1"] = kSystem;
    drawing.withLegacyCode(L"MINE:1");
    ASSERT_EQ(read(), Texts{L"MINE:1"});
    fail("CoordinateReferenceSystemDefinition::Load");
    EXPECT_EQ(read(), Texts());
    EXPECT_EQ(result, Qeapp::eNotApplicable);
    EXPECT_EQ(Cs::SetCoordinateSystem(L"MINE:1", database(), &status), Qeapp::eInvalidInput);
}

TEST_F(FailingCalls, CatalogFailure_MakesADefinitionUnknown)
{
    ASSERT_EQ(Cs::SetCoordinateSystem(system().get(), database(), &status), Qeapp::eOk);
    answers().catalog[L"MINE:1"] = kSystem;
    answers().statuses["CoordinateReferenceSystemDefinition::Load"] = Library::statusNotFound;
    SystemHolder definition;
    bool known = true;
    EXPECT_EQ(Cs::GetCoordinateSystem(definition.put(), &known, database(), &status), Qeapp::eOk);
    EXPECT_TRUE(definition);
    EXPECT_FALSE(known);
}

TEST_F(FailingCalls, CatalogFailure_StoresTheDrawingsOwnDefinition)
{
    ASSERT_EQ(Cs::SetCoordinateSystem(system().get(), database(), &status), Qeapp::eOk);
    answers().catalog[L"MINE:1"] = {.code = L"MINE:1", .kind = Library::kindNotEarthReferenced};
    answers().statuses["CoordinateReferenceSystemDefinition::Load"] = Library::statusNotFound;
    ASSERT_EQ(Cs::ApplyCoordinateSystemStorageVersion(database(), kOlderVersion, &status), Qeapp::eOk);
    EXPECT_EQ(read(), (Texts{L"MINE:1", L"MINE:2", L"MINE:3"}));
}

TEST_F(FailingCalls, FailureToCreateAnArray_ReturnsInvalidInput)
{
    fail("DefinitionBaseArray::CreateInstance");
    EXPECT_EQ(read(), Texts());
    EXPECT_EQ(result, Qeapp::eInvalidInput);
    drawing.withLegacyCode(L"MINE:1");
    EXPECT_EQ(read(), Texts());
    EXPECT_EQ(result, Qeapp::eInvalidInput);
}

TEST_F(FailingCalls, FailureWhileWritingStoredDefinitions_IsReturned)
{
    for (const char* const call :
         {"CoordinateReferenceSystemDefinition::GetKind", "CoordinateReferenceSystemOperation::Load",
          "CoordinateReferenceSystemOperation::IsDatumBased", "CoordinateReferenceSystemDefinition::GetDatum",
          "CoordinateReferenceSystemUtil::GetEllipsoid"}) {
        fail(call);
        EXPECT_EQ(writeXrecord(), Qeapp::eInvalidInput) << call;
        answers().statuses.clear();
    }
    for (const char* const call :
         {"DefinitionStream::CreateInstance", "DefinitionStream::Add", "DefinitionStream::Write"}) {
        fail(call);
        EXPECT_EQ(writeXrecord(), Qeapp::eInvalidResbuf) << call;
        answers().statuses.clear();
    }
    EXPECT_TRUE(hasNoXrecord());
    EXPECT_EQ(writeXrecord(), Qeapp::eOk);
}

TEST_F(FailingCalls, SuccessWithoutADatumOrEllipsoid_ReturnsInvalidResbuf)
{
    for (const char* const call :
         {"CoordinateReferenceSystemDefinition::GetDatum", "CoordinateReferenceSystemUtil::GetEllipsoid"}) {
        answers().withoutObject = {call};
        EXPECT_EQ(writeXrecord(), Qeapp::eInvalidResbuf) << call;
    }
    EXPECT_TRUE(hasNoXrecord());
}

TEST_F(FailingCalls, FailureToReadTheCode_StoresNoOlderForm)
{
    ASSERT_EQ(Cs::SetCoordinateSystem(system().get(), database(), &status), Qeapp::eOk);
    fail("DefinitionBase::GetCode");
    EXPECT_EQ(Cs::ApplyCoordinateSystemStorageVersion(database(), kOlderVersion, &status), Qeapp::eInvalidInput);
    EXPECT_TRUE(hasNoXrecord());
}

TEST_F(FailingCalls, FailureToConvertToWkt_BlanksTheGeoDataText)
{
    ASSERT_EQ(Cs::SetCoordinateSystem(system().get(), database(), &status), Qeapp::eOk);
    fail("FormatConverter::DefinitionToWkt_s");
    ASSERT_EQ(Cs::ApplyCoordinateSystemStorageVersion(database(), kOlderVersion, &status), Qeapp::eOk);
    EXPECT_EQ(drawing.geoDataText(), L"");
}

} // namespace
} // namespace Tests
