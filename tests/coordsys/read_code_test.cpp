#include "support/coordsys_test.h"

namespace {

using namespace Tests;
using Embedded::FaultInjection;
using Embedded::ScopedFault;

constexpr const char* kGetCode = "DefinitionBase::GetCode";

class ReadCode : public CoordsysTest {
protected:
    Orvel::HostString code;

    Qeapp::ErrorStatus read() { return Cs::GetCoordinateSystem(code.put(), database()); }
    /// No value where the pointer is null.
    std::optional<std::wstring> text() const { return code ? std::optional<std::wstring>(code.get()) : std::nullopt; }
    /// The occurrence at which the function itself asks the definition for its code, after the catalog check.
    std::size_t lastQuestionForTheCode()
    {
        FaultInjection::watch();
        EXPECT_EQ(read(), Qeapp::eOk);
        return countCalls(kGetCode);
    }
};

TEST_F(ReadCode, DrawingWithNothingStored_GivesNoCode)
{
    EXPECT_EQ(read(), Qeapp::eOk);
    EXPECT_EQ(text(), std::nullopt);
}

TEST_F(ReadCode, DrawingWithNothingStored_SetsTheCallersPointerToNull)
{
    wchar_t former[] = L"former";
    wchar_t* callers = former;
    EXPECT_EQ(Cs::GetCoordinateSystem(callers, database()), Qeapp::eOk);
    EXPECT_EQ(callers, nullptr);
}

TEST_F(ReadCode, SystemOfTheCatalog_GivesItsCodeAsAHostString)
{
    storeSystem(L"EPSG:25832");
    EXPECT_EQ(read(), Qeapp::eOk);
    EXPECT_EQ(text(), L"EPSG:25832");
}

TEST_F(ReadCode, LegacyCode_GivesTheCatalogsSpelling)
{
    drawing.withLegacyCode(L"epsg:2263");
    EXPECT_EQ(read(), Qeapp::eOk);
    EXPECT_EQ(text(), L"EPSG:2263");
}

TEST_F(ReadCode, DeprecatedSystem_GivesItsCode)
{
    storeSystem(L"EPSG:3785");
    EXPECT_EQ(read(), Qeapp::eOk);
    EXPECT_EQ(text(), L"EPSG:3785");
}

TEST_F(ReadCode, SystemThatTheCatalogDoesNotHave_IsInvalidInput)
{
    drawing.withGeoData(serializedText(userSystem().get()));
    EXPECT_EQ(read(), Qeapp::eInvalidInput);
    EXPECT_EQ(text(), std::nullopt);
}

TEST_F(ReadCode, ArrayWithoutASystem_GivesNoCode)
{
    drawing.withGeoData(serializedText(catalogEllipsoid(L"EPSG:7019").get()));
    EXPECT_EQ(read(), Qeapp::eOk);
    EXPECT_EQ(text(), std::nullopt);
}

TEST_F(ReadCode, LegacyCodeUnknownToXrecordAndCatalog_IsNotApplicable)
{
    drawing.withLegacyCode(L"MINE:1");
    EXPECT_EQ(read(), Qeapp::eNotApplicable);
    EXPECT_EQ(text(), std::nullopt);
}

TEST_F(ReadCode, FailedReading_SetsTheCallersPointerToNull)
{
    drawing.withLegacyCode(L"MINE:1");
    wchar_t former[] = L"former";
    wchar_t* callers = former;
    EXPECT_EQ(Cs::GetCoordinateSystem(callers, database()), Qeapp::eNotApplicable);
    EXPECT_EQ(callers, nullptr);
}

TEST_F(ReadCode, HostFailure_PassesOn)
{
    storeSystem(L"EPSG:25832");
    const ScopedFault fault({.call = "qedbOpenQeDbObject", .code = 31});
    EXPECT_EQ(read(), 31);
    EXPECT_EQ(text(), std::nullopt);
}

TEST_F(ReadCode, CatalogWithoutMemory_IsOutOfMemory)
{
    storeSystem(L"EPSG:25832");
    const ScopedFault fault({.call = kLoadSystem, .code = 57});
    EXPECT_EQ(read(), Qeapp::eOutOfMemory);
    EXPECT_EQ(text(), std::nullopt);
}

TEST_F(ReadCode, CatalogThatFailsOtherwise_IsInvalidInput)
{
    storeSystem(L"EPSG:25832");
    const ScopedFault fault({.call = kLoadSystem, .code = 46});
    EXPECT_EQ(read(), Qeapp::eInvalidInput);
    EXPECT_EQ(text(), std::nullopt);
}

TEST_F(ReadCode, CodeThatCannotBeRead_IsInvalidInput)
{
    storeSystem(L"EPSG:25832");
    const ScopedFault fault({.call = kGetCode, .occurrence = lastQuestionForTheCode(), .code = {}});
    EXPECT_EQ(read(), Qeapp::eInvalidInput);
    EXPECT_EQ(text(), std::nullopt);
}

TEST_F(ReadCode, CodeThatCannotBeReadForTheCheckEither_IsInvalidInput)
{
    storeSystem(L"EPSG:25832");
    const ScopedFault fault({.call = kGetCode, .fromThenOn = true, .code = {}});
    EXPECT_EQ(read(), Qeapp::eInvalidInput);
    EXPECT_EQ(text(), std::nullopt);
}

TEST_F(ReadCode, CodeThatCannotBeReadForTheCheckAlone_IsInvalidInput)
{
    storeSystem(L"EPSG:25832");
    const ScopedFault fault({.call = kGetCode, .code = {}});
    EXPECT_EQ(read(), Qeapp::eInvalidInput);
    EXPECT_EQ(text(), std::nullopt);
}

// The library has no empty code. A query that succeeds without a text comes closest to it.
TEST_F(ReadCode, CodeThatIsNotThere_IsInvalidInput)
{
    storeSystem(L"EPSG:25832");
    const ScopedFault fault({.call = kGetCode, .occurrence = lastQuestionForTheCode(), .code = 0});
    EXPECT_EQ(read(), Qeapp::eInvalidInput);
    EXPECT_EQ(text(), std::nullopt);
    EXPECT_EQ(countCalls("qeutNewString"), 0U) << "the host is not asked to copy it";
}

TEST_F(ReadCode, StringThatTheHostCannotMake_PassesTheHostResultOn)
{
    storeSystem(L"EPSG:25832");
    const ScopedFault fault({.call = "qeutNewString", .code = 6});
    EXPECT_EQ(read(), Qeapp::eOutOfMemory);
    EXPECT_EQ(text(), std::nullopt);
}

TEST_F(ReadCode, StringThatTheHostRefusesForAReasonOfItsOwn_PassesTheHostResultOn)
{
    storeSystem(L"EPSG:25832");
    const ScopedFault fault({.call = "qeutNewString", .code = 999});
    EXPECT_EQ(read(), 999);
    EXPECT_EQ(text(), std::nullopt);
}

TEST_F(ReadCode, UnknownSystem_LeavesNoHostStringBehind)
{
    drawing.withGeoData(serializedText(userSystem().get()));
    FaultInjection::watch();
    EXPECT_EQ(read(), Qeapp::eInvalidInput);
    EXPECT_EQ(countCalls("qeutNewString"), 1U); // so there was one, which the fixture finds released
}

} // namespace
