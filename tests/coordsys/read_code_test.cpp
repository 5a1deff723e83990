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
    /// The code; no value for a null pointer.
    std::optional<std::wstring> text() const { return code ? std::optional<std::wstring>(code.get()) : std::nullopt; }
    /// The number of the last query of the code, which the function makes after the catalog check.
    std::size_t countCodeQueries()
    {
        FaultInjection::watch();
        EXPECT_EQ(read(), Qeapp::eOk);
        return countCalls(kGetCode);
    }
};

TEST_F(ReadCode, EmptyDrawing_GivesNoCode)
{
    EXPECT_EQ(read(), Qeapp::eOk);
    EXPECT_EQ(text(), std::nullopt);
}

TEST_F(ReadCode, EmptyDrawing_SetsTheCallersPointerToNull)
{
    wchar_t former[] = L"former";
    wchar_t* callers = former;
    EXPECT_EQ(Cs::GetCoordinateSystem(callers, database()), Qeapp::eOk);
    EXPECT_EQ(callers, nullptr);
}

TEST_F(ReadCode, CatalogSystem_GivesItsCodeAsAHostString)
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

TEST_F(ReadCode, SystemOutsideTheCatalog_ReturnsInvalidInput)
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

TEST_F(ReadCode, LegacyCodeWithoutADefinition_ReturnsNotApplicable)
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

TEST_F(ReadCode, HostFailure_IsReturned)
{
    storeSystem(L"EPSG:25832");
    const ScopedFault fault({.call = "qedbOpenQeDbObject", .code = 31});
    EXPECT_EQ(read(), 31);
    EXPECT_EQ(text(), std::nullopt);
}

TEST_F(ReadCode, CatalogWithoutMemory_ReturnsOutOfMemory)
{
    storeSystem(L"EPSG:25832");
    const ScopedFault fault({.call = kLoadSystem, .code = 57});
    EXPECT_EQ(read(), Qeapp::eOutOfMemory);
    EXPECT_EQ(text(), std::nullopt);
}

TEST_F(ReadCode, OtherCatalogFailure_ReturnsInvalidInput)
{
    storeSystem(L"EPSG:25832");
    const ScopedFault fault({.call = kLoadSystem, .code = 46});
    EXPECT_EQ(read(), Qeapp::eInvalidInput);
    EXPECT_EQ(text(), std::nullopt);
}

TEST_F(ReadCode, CodeThatCannotBeReadAfterTheCheck_ReturnsInvalidInput)
{
    storeSystem(L"EPSG:25832");
    const ScopedFault fault({.call = kGetCode, .occurrence = countCodeQueries(), .code = {}});
    EXPECT_EQ(read(), Qeapp::eInvalidInput);
    EXPECT_EQ(text(), std::nullopt);
}

TEST_F(ReadCode, CodeThatCanNeverBeRead_ReturnsInvalidInput)
{
    storeSystem(L"EPSG:25832");
    const ScopedFault fault({.call = kGetCode, .fromThenOn = true, .code = {}});
    EXPECT_EQ(read(), Qeapp::eInvalidInput);
    EXPECT_EQ(text(), std::nullopt);
}

TEST_F(ReadCode, CodeThatCannotBeReadForTheCheck_ReturnsInvalidInput)
{
    storeSystem(L"EPSG:25832");
    const ScopedFault fault({.call = kGetCode, .code = {}});
    EXPECT_EQ(read(), Qeapp::eInvalidInput);
    EXPECT_EQ(text(), std::nullopt);
}

// The library has no empty code. A query that succeeds without a text comes closest to it.
TEST_F(ReadCode, MissingCode_ReturnsInvalidInput)
{
    storeSystem(L"EPSG:25832");
    const ScopedFault fault({.call = kGetCode, .occurrence = countCodeQueries(), .code = 0});
    EXPECT_EQ(read(), Qeapp::eInvalidInput);
    EXPECT_EQ(text(), std::nullopt);
    EXPECT_EQ(countCalls("qeutNewString"), 0U) << "no host string is allocated";
}

TEST_F(ReadCode, HostStringWithoutMemory_ReturnsOutOfMemory)
{
    storeSystem(L"EPSG:25832");
    const ScopedFault fault({.call = "qeutNewString", .code = 6});
    EXPECT_EQ(read(), Qeapp::eOutOfMemory);
    EXPECT_EQ(text(), std::nullopt);
}

TEST_F(ReadCode, HostStringThatFails_ReturnsTheHostResult)
{
    storeSystem(L"EPSG:25832");
    const ScopedFault fault({.call = "qeutNewString", .code = 999});
    EXPECT_EQ(read(), 999);
    EXPECT_EQ(text(), std::nullopt);
}

TEST_F(ReadCode, SystemOutsideTheCatalog_ReleasesTheHostString)
{
    drawing.withGeoData(serializedText(userSystem().get()));
    FaultInjection::watch();
    EXPECT_EQ(read(), Qeapp::eInvalidInput);
    EXPECT_EQ(countCalls("qeutNewString"), 1U); // the fixture checks that it was released
}

} // namespace
