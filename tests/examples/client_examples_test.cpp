#include "client/client.h"

#include "coordsys/orvel_coordinate_system.h"
#include "embedded/host/application/application.h"
#include "support/drawing.h"
#include "support/platform_test.h"
#include "support/scoped_document.h"

namespace Tests {
namespace {

namespace Cs = Zentara::Gis::Orvel::CoordinateSystem;

using Codes = std::vector<std::wstring>;

class ClientExamples : public PlatformTest {
protected:
    Drawing drawing;

    Qeapp::ErrorStatus assign(const wchar_t* code) { return Cs::SetCoordinateSystem(code, drawing.database()); }
    Codes readDrawing()
    {
        Codes codes;
        EXPECT_TRUE(readCodes(drawing.database(), codes));
        return codes;
    }
};

TEST_F(ClientExamples, Assign_GivesTheDrawingTheSystem)
{
    EXPECT_TRUE(putOnTheEarth(drawing.database()));
    EXPECT_EQ(readDrawing(), (Codes{L"EPSG:25832", L"EPSG:6258", L"EPSG:7019"}));
}

TEST_F(ClientExamples, Assign_FailsWithoutADrawing)
{
    EXPECT_FALSE(putOnTheEarth(nullptr)); // there is no working drawing either
}

TEST_F(ClientExamples, ReadDefinitions_FindsNothingInANewDrawing)
{
    EXPECT_EQ(readDrawing(), Codes{});
}

TEST_F(ClientExamples, ReadDefinitions_ReportsAndReleasesAFailure)
{
    drawing.withGeoData(L"not a definition");
    Codes codes;
    EXPECT_FALSE(readCodes(drawing.database(), codes));
    EXPECT_EQ(codes, Codes{});
}

TEST_F(ClientExamples, Veto_RefusesSystemsOfOthersUntilTheReactorIsRemoved)
{
    ASSERT_TRUE(allowOnlyEpsg());
    EXPECT_EQ(assign(L"LOCAL:METRE"), Qeapp::eVetoed);
    EXPECT_EQ(assign(L"EPSG:2263"), Qeapp::eOk);
    EXPECT_EQ(Cs::ClearCoordinateSystem(drawing.database()), Qeapp::eOk);
    ASSERT_TRUE(allowEverything());
    EXPECT_EQ(assign(L"LOCAL:METRE"), Qeapp::eOk);
}

TEST_F(ClientExamples, Veto_IsRegisteredOnce)
{
    ASSERT_TRUE(allowOnlyEpsg());
    EXPECT_FALSE(allowOnlyEpsg());
    ASSERT_TRUE(allowEverything());
    EXPECT_FALSE(allowEverything());
}

TEST_F(ClientExamples, ChooseTransformation_KeepsTheFormerChoices)
{
    const ScopedDocument document;
    ASSERT_TRUE(chooseTransformation(L"EPSG:4230", L"EPSG:4326", L"ED50 to WGS 84 (1)"));
    ASSERT_TRUE(chooseTransformation(L"EPSG:4314", L"EPSG:4326", L"DHDN to WGS 84 (2)"));
    EXPECT_EQ(chosenTransformation(L"EPSG:4230", L"EPSG:4326"), L"ED50 to WGS 84 (1)");
    EXPECT_EQ(chosenTransformation(L"EPSG:4314", L"EPSG:4326"), L"DHDN to WGS 84 (2)");
}

TEST_F(ClientExamples, ChooseTransformation_FailsWithoutAWorkingDrawing)
{
    EXPECT_FALSE(chooseTransformation(L"EPSG:4230", L"EPSG:4326", L"ED50 to WGS 84 (1)"));
}

/// The state of the module that a client is linked with, when the host loads and unloads the module.
TEST_F(ClientExamples, LinkedClient_KeepsItsReactorWhenTheHostUnloadsTheModule)
{
    const Embedded::Expected<void*> handle = Embedded::loadModule(ORVEL_MODULE_FILE);
    ASSERT_TRUE(handle) << handle.error().text();
    ASSERT_TRUE(allowOnlyEpsg());
    ASSERT_EQ(Embedded::unloadModule(*handle), Qeapp::eOk);
    EXPECT_EQ(assign(L"LOCAL:METRE"), Qeapp::eVetoed);
    EXPECT_TRUE(allowEverything());
}

} // namespace
} // namespace Tests
