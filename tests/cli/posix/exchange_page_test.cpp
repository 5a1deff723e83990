// The examples of docs/exchange.md, as they stand there.
#include "cli/command_line_test.h"
#include "cli/posix/page_shell.h"
#include "cli/system_equivalence.h"
#include "project/command_blocks.h"

namespace Tests {
namespace {

using testing::AllOf;
using testing::HasSubstr;

constexpr const char* kSystem = "EPSG:25832";

class ExchangePage : public CommandLineTest {
protected:
    ExchangePage()
    {
        givenDrawingWith("site.qedb", kSystem);
        given("plan.geojson", pointAt("500000, 5500000"));
        given("survey.geojson", pointAt("9, 50"));
    }

    static std::string pointAt(const std::string& coordinates)
    {
        return R"({"type": "FeatureCollection", "features": [{"type": "Feature", "properties": {},
                   "geometry": {"type": "Point", "coordinates": [)" +
               coordinates + "]}}]}";
    }
    /// Runs the examples below a heading, each of which must succeed. Returns what they print.
    std::vector<std::string> runExamples(const std::string& heading) const
    {
        std::vector<std::string> outputs;
        for (const std::string& script : commandsBelow("docs/exchange.md", heading)) {
            const ProgramResult result = run(pageShell(script, path("")));
            EXPECT_EQ(result.status, 0) << script << result.errors;
            outputs.push_back(result.output);
        }
        return outputs;
    }
};

TEST_F(ExchangePage, FilesOfTheirOwn_AreReadByGdal)
{
    const std::vector<std::string> outputs = runExamples("As a file of its own");
    ASSERT_EQ(outputs.size(), 2U);
    EXPECT_TRUE(isSameSystem(kSystem, contents("site.prj"), AxisOrder::ignored));
    EXPECT_TRUE(isSameSystem(kSystem, contents("site.wkt")));
    EXPECT_TRUE(isSameSystem(kSystem, contents("site.json")));
    std::size_t definitions = 0;
    for (std::size_t at = 0; (at = outputs[1].find("\nPROJCRS[\"ETRS89 / UTM zone 32N\"", at)) != std::string::npos;
         ++at)
        ++definitions;
    EXPECT_EQ(definitions, 3U) << outputs[1];
}

TEST_F(ExchangePage, EmptyLayer_TakesFeatures)
{
    const std::vector<std::string> outputs = runExamples("As an empty layer");
    ASSERT_EQ(outputs.size(), 2U);
    EXPECT_THAT(outputs[0], AllOf(HasSubstr("Layer name: drawing\n"), HasSubstr("Feature Count: 0\n"),
                                  HasSubstr("PROJCRS[\"ETRS89 / UTM zone 32N\"")));
    const ProgramResult filled = run(pageShell("ogrinfo -al site.gpkg", path("")));
    EXPECT_THAT(filled.output, AllOf(HasSubstr("Feature Count: 1\n"), HasSubstr("POINT (500000.0 5538630.")));
}

TEST_F(ExchangePage, OptionsOfOtherPrograms_TakeTheDefinition)
{
    const std::vector<std::string> outputs = runExamples("As an option of another program");
    ASSERT_EQ(outputs.size(), 2U);
    EXPECT_THAT(outputs[0], HasSubstr("PROJCRS[\"ETRS89 / UTM zone 32N\""));
    EXPECT_THAT(outputs[1], AllOf(HasSubstr("Feature Count: 1\n"), HasSubstr("PROJCRS[\"ETRS89 / UTM zone 32N\"")));
}

TEST_F(ExchangePage, SystemOfAnotherProgram_GoesIntoADrawing)
{
    givenDrawing("copy.qedb");
    runExamples("As an option of another program"); // makes plan.gpkg
    runExamples("Back into a drawing");
    EXPECT_TRUE(isSameSystem(kSystem, run({"show", "copy.qedb", "--format", "wkt2"}).output));
}

} // namespace
} // namespace Tests
