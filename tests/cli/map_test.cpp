// map: pictures of where systems and drawings are.
#include <algorithm>
#include <regex>
#include <set>

#include "command_line_test.h"
#include "orvelcs/output/map/map_view.h"

namespace Tests {
namespace {

using testing::HasSubstr;
using testing::Not;

/// A number on the map, in its box.
struct Number {
    int number;
    Orvelcs::PageBox box;
};

class MapCommand : public CommandLineTest {
protected:
    std::string picture(const Arguments& systems) const
    {
        const ProgramResult result = run(concatenate({"map", "-o", "map.svg", "--force"}, systems));
        EXPECT_EQ(result.status, 0) << result.errors;
        return contents("map.svg");
    }

    static std::vector<Number> numbersOf(const std::string& svg)
    {
        static const std::regex pattern(R"re(<rect class="number on-map" x="([^"]*)" y="([^"]*)" width="([^"]*)" )re"
                                        R"re(height="([^"]*)"[^>]*/>\n *<text[^>]*>(\d+)</text>)re");
        std::vector<Number> numbers;
        for (std::sregex_iterator match(svg.begin(), svg.end(), pattern); match != std::sregex_iterator(); ++match)
            numbers.push_back(
                {std::stoi((*match)[5]),
                 {std::stod((*match)[1]), std::stod((*match)[2]), std::stod((*match)[3]), std::stod((*match)[4])}});
        return numbers;
    }

    static Orvelcs::PageBox viewBoxOf(const std::string& svg)
    {
        static const std::regex pattern(R"re(viewBox="0 0 (\S+) (\S+)")re");
        std::smatch match;
        EXPECT_TRUE(std::regex_search(svg, match, pattern));
        return {0, 0, std::stod(match[1]), std::stod(match[2])};
    }

    /// Expects that each number up to the last one is there once, inside the picture, and that none meets another.
    static void expectNumbers(const std::string& svg, int last)
    {
        const std::vector<Number> numbers = numbersOf(svg);
        std::set<int> different;
        for (std::size_t index = 0; index < numbers.size(); ++index) {
            different.insert(numbers[index].number);
            EXPECT_TRUE(viewBoxOf(svg).contains(numbers[index].box)) << numbers[index].number;
            for (std::size_t other = 0; other < index; ++other)
                EXPECT_FALSE(numbers[index].box.meets(numbers[other].box))
                    << numbers[index].number << " " << numbers[other].number;
        }
        EXPECT_EQ(numbers.size(), static_cast<std::size_t>(last));
        EXPECT_EQ(different.size(), static_cast<std::size_t>(last));
        EXPECT_EQ(different.empty() ? 0 : *different.rbegin(), last);
    }

    static Arguments zones()
    {
        Arguments codes;
        for (int zone = 1; zone <= 60; ++zone)
            for (const int first : {32600, 32700})
                codes.push_back("EPSG:" + std::to_string(first + zone));
        return codes;
    }
};

TEST_F(MapCommand, WritesAPictureOfASystem)
{
    expectResult(run({"map", "EPSG:25832", "-o", "utm.svg"}), 0, "utm.svg: a map of 1 system\n", "");
    const std::string svg = contents("utm.svg");
    EXPECT_THAT(svg, testing::StartsWith("<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 1000 "));
    EXPECT_THAT(svg, testing::EndsWith("</svg>\n"));
    EXPECT_THAT(svg, HasSubstr("<title id=\"title\">EPSG:25832 ETRS89 / UTM zone 32N</title>"));
    EXPECT_THAT(svg, HasSubstr("Number 1: EPSG:25832 ETRS89 / UTM zone 32N; Europe between 6\u00B0E and 12\u00B0E"));
    const Json version = runForJson({"--version"});
    EXPECT_THAT(svg, HasSubstr(version["proj"].get<std::string>() + ", " + "EPSG " +
                               version["catalog"]["EPSG"].get<std::string>()));
    expectNumbers(svg, 1);
    EXPECT_EQ(files(), std::vector<std::string>{"utm.svg"});
}

TEST_F(MapCommand, Picture_NeedsNothingFromElsewhere)
{
    const std::string svg = picture({"EPSG:25832", "EPSG:2193"});
    for (const char* part : {"<script", "href", "@import", "url(", "<image", "<foreignObject"})
        EXPECT_THAT(svg, Not(HasSubstr(part)));
    EXPECT_THAT(svg, HasSubstr("prefers-color-scheme:dark"));
}

TEST_F(MapCommand, AllZones_HaveTheirNumbersOnce)
{
    expectNumbers(picture(zones()), 120);
}

TEST_F(MapCommand, TwoHundredSystems_HaveTheirNumbersOnce)
{
    const Json found = runForJson({"catalog", "search", "--kind", "3", "--authority", "EPSG"});
    for (const bool isCrowded : {false, true}) { // from all over the catalog, or neighbours in it
        SCOPED_TRACE(isCrowded);
        Arguments systems;
        for (std::size_t index = 0; systems.size() < 200; index += isCrowded ? 1 : 20)
            systems.push_back(found.at(index)["code"]);
        const Json document = runForJson(concatenate({"map", "-o", "map.svg", "--force"}, systems));
        int last = 0;
        for (const Json& system : document["systems"])
            last = std::max(last, system["number"].get<int>());
        EXPECT_GT(last, 50);
        expectNumbers(contents("map.svg"), last);
    }
}

TEST_F(MapCommand, SameSystems_GiveTheSameBytes)
{
    const std::string first = picture(zones());
    EXPECT_EQ(picture(zones()), first);
    EXPECT_EQ(run(concatenate({"map", "-o", "-"}, zones())).output, first);
}

TEST_F(MapCommand, Json_HasTheSystemsWithTheirNumbers)
{
    givenDrawingWith("site.qedb", "EPSG:25832");
    const Json document =
        runForJson({"map", "EPSG:2193", "@site.qedb", "EPSG:25832", "EPSG:3408", "LOCAL:METRE", "-o", "map.svg"});
    EXPECT_EQ(document["output"], "map.svg");
    const Json& systems = document["systems"];
    ASSERT_EQ(systems.size(), 5U);
    EXPECT_EQ(systems[0], (Json{{"number", 1},
                                {"code", "EPSG:2193"},
                                {"name", "NZGD2000 / New Zealand Transverse Mercator 2000"},
                                {"areaOfUse", "New Zealand - North Island, South Island, Stewart Island - onshore."},
                                {"bounds", {166.37, -47.33, 178.63, -34.1}},
                                {"deprecated", false},
                                {"file", nullptr}}));
    EXPECT_EQ(systems[1]["file"], "site.qedb");
    EXPECT_EQ(systems[1]["code"], "EPSG:25832");
    EXPECT_EQ(systems[1]["number"], 2);
    EXPECT_EQ(systems[2]["number"], 2) << "equal areas share a number";
    EXPECT_EQ(systems[3]["deprecated"], true);
    EXPECT_EQ(systems[4]["number"], nullptr);
    EXPECT_EQ(systems[4]["bounds"], nullptr);
    expectNumbers(contents("map.svg"), 3);
}

TEST_F(MapCommand, Drawing_IsShownWithItsNameAndSystem)
{
    givenDrawingWith("a&b.qedb", "EPSG:25832");
    const std::string svg = picture({"@a&b.qedb"});
    EXPECT_THAT(svg, HasSubstr("<title id=\"title\">a&amp;b.qedb</title>"));
    EXPECT_THAT(svg, HasSubstr(">a&amp;b.qedb</tspan>"));
    EXPECT_THAT(svg, HasSubstr(">EPSG:25832</tspan>"));
    EXPECT_THAT(svg, HasSubstr(">ETRS89 / UTM zone 32N</tspan>"));
}

TEST_F(MapCommand, DeprecatedSystem_IsMarked)
{
    const std::string svg = picture({"EPSG:3408"});
    EXPECT_THAT(svg, HasSubstr("NSIDC EASE-Grid North (deprecated)"));
    EXPECT_THAT(svg, HasSubstr("class=\"area colour1 deprecated\""));
    EXPECT_THAT(picture({"EPSG:25832"}), Not(HasSubstr("class=\"area colour1 deprecated\"")));
}

TEST_F(MapCommand, SystemWithoutAnAreaOfUse_IsListedAndNamed)
{
    const ProgramResult result = run({"map", "LOCAL:METRE", "EPSG:25832", "-o", "map.svg"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.errors,
              "orvelcs: map: LOCAL:METRE: note: has no area of use that could be drawn; it is in the list "
              "only\n");
    EXPECT_THAT(contents("map.svg"), HasSubstr(">LOCAL:METRE</tspan>"));
    expectNumbers(contents("map.svg"), 1);
    expectNumbers(picture({"LOCAL:METRE"}), 0);
}

TEST_F(MapCommand, TextWithTheCodeOfACatalogSystem_IsDrawnThere)
{
    given("site.txt", run({"catalog", "show", "EPSG:2193", "--format", "wkt2"}).output);
    const Json system = runForJson({"map", "@site.txt", "-o", "map.svg"})["systems"][0];
    EXPECT_EQ(system["code"], "EPSG:2193");
    EXPECT_EQ(system["file"], "site.txt");
    EXPECT_EQ(system["number"], 1);
    expectNumbers(contents("map.svg"), 1);
}

TEST_F(MapCommand, DefinitionOfOnesOwn_IsListed)
{
    given("site.txt", "+proj=tmerc +lat_0=50 +lon_0=10 +ellps=bessel +units=m +type=crs");
    const ProgramResult result = run({"map", "@site.txt", "EPSG:25832", "-o", "map.svg"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.errors,
              "orvelcs: map: @site.txt: note: has no area of use that could be drawn; it is in the list only\n");
    EXPECT_THAT(contents("map.svg"), HasSubstr(">site.txt</tspan>"));
    expectNumbers(contents("map.svg"), 1);
}

TEST_F(MapCommand, ListOfDrawings_IsDrawnBesideTheSystems)
{
    givenDrawingWith("one.qedb", "EPSG:25832");
    givenDrawingWith("two.qedb", "EPSG:2193");
    ProgramRun listed;
    listed.arguments = {"--json", "map", "EPSG:3413", "--files-from", "-", "-o", "map.svg"};
    listed.input = "one.qedb\ntwo.qedb\n";
    const ProgramResult result = run(listed);
    ASSERT_EQ(result.status, 0) << result.errors;
    const Json systems = Json::parse(result.output)["systems"];
    ASSERT_EQ(systems.size(), 3U);
    EXPECT_EQ(systems[0]["file"], nullptr);
    EXPECT_EQ(systems[1]["file"], "one.qedb");
    EXPECT_EQ(systems[2]["file"], "two.qedb");
    expectNumbers(contents("map.svg"), 3);
    expectResult(run({"map", "--files-from", "-", "-o", "none.svg"}), 3, "", "orvelcs: map: -: names no drawing\n");
    EXPECT_EQ(files(), (std::vector<std::string>{"map.svg", "one.qedb", "two.qedb"}));
}

TEST_F(MapCommand, FileThatExists_IsNotOverwritten)
{
    given("map.svg", "something else");
    expectResult(run({"map", "EPSG:25832", "-o", "map.svg"}), 1, "",
                 "orvelcs: map: map.svg: exists; --force overwrites it\n");
    EXPECT_EQ(contents("map.svg"), "something else");
    EXPECT_EQ(run({"map", "EPSG:25832", "-o", "map.svg", "--force"}).status, 0);
    EXPECT_THAT(contents("map.svg"), testing::StartsWith("<svg "));
    EXPECT_EQ(files(), std::vector<std::string>{"map.svg"});
}

TEST_F(MapCommand, FolderThatDoesNotExist_IsNamed)
{
    const ProgramResult result = run({"map", "EPSG:25832", "-o", "nowhere/map.svg"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.errors, testing::StartsWith("orvelcs: map: nowhere/map.svg: eFileWriteFailed ("));
    EXPECT_EQ(files(), std::vector<std::string>{});
}

TEST_F(MapCommand, NothingFound_LeavesNoPicture)
{
    givenDrawing("empty.qedb");
    expectResult(run({"map", "EPSG:25832", "@empty.qedb", "-o", "map.svg"}), 3, "",
                 "orvelcs: map: empty.qedb: has no coordinate system\n");
    expectResult(run({"map", "EPSG:25833", "EPSG:25899", "-o", "map.svg"}), 3, "",
                 testing::StartsWith("orvelcs: map: EPSG:25899: the catalog has no such code"));
    EXPECT_EQ(files(), std::vector<std::string>{"empty.qedb"});
}

TEST_F(MapCommand, WrongUsage_SaysWhatIsExpected)
{
    expectWrongUsage(run({"map", "EPSG:25832", "-o", "map.png"}),
                     "orvelcs: map: --output: expected a name that ends with .svg or .html, found map.png");
    expectWrongUsage(run({"map", "@-", "@-", "-o", "map.svg"}),
                     "orvelcs: map: SYSTEM: standard input is named twice, and can be read once");
    expectWrongUsage(run({"map", "@-", "--files-from", "-", "-o", "map.svg"}),
                     "orvelcs: map: SYSTEM: standard input is named twice, and can be read once");
    expectWrongUsage(run({"map", "-o", "map.svg"}), "orvelcs: map: SYSTEM: is required");
    expectWrongUsage(run(concatenate({"map", "-o", "map.svg"}, Arguments(201, "EPSG:25832"))),
                     "orvelcs: map: SYSTEM: expected at most 200 systems on one map, found 201");
    EXPECT_EQ(run({"map", "EPSG:25832"}).status, 2);
    EXPECT_EQ(run({"--json", "map", "EPSG:25832", "-o", "-"}).status, 2);
    EXPECT_EQ(files(), std::vector<std::string>{});
}

} // namespace
} // namespace Tests
