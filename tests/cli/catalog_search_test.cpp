// Ranking, notations, areas of use and suggestions of catalog search.
#include <algorithm>
#include <cctype>

#include "command_line_test.h"

namespace Tests {
namespace {

using testing::HasSubstr;

class CatalogSearchCommand : public CommandLineTest {
protected:
    Json search(const Arguments& arguments) const { return runForJson(concatenate({"catalog", "search"}, arguments)); }
    std::vector<std::string> codes(const Arguments& arguments) const
    {
        std::vector<std::string> all;
        for (const Json& entry : search(arguments))
            all.push_back(entry["code"]);
        return all;
    }
    std::string errorsOf(const Arguments& arguments) const
    {
        const ProgramResult result = run(concatenate({"catalog", "search"}, arguments));
        EXPECT_EQ(result.status, 3) << result.errors;
        EXPECT_EQ(result.output, "");
        return result.errors;
    }
    /// The place of a code in the list; the length of the list when it is missing.
    static std::ptrdiff_t place(const std::vector<std::string>& codes, const std::string& code)
    {
        return std::ranges::find(codes, code) - codes.begin();
    }
};

TEST_F(CatalogSearchCommand, RanksAnExactCodeFirst)
{
    const std::vector<std::string> found = codes({"2000"});
    EXPECT_EQ(found.front(), "EPSG:2000");
    EXPECT_LT(place(found, "EPSG:4612"), static_cast<std::ptrdiff_t>(found.size())); // JGD2000
}

TEST_F(CatalogSearchCommand, RanksAnExactNameBeforeWholeWordsBeforeBeginningsBeforeInside)
{
    const Json found = search({"ain"});
    std::vector<int> ranks;
    for (const Json& entry : found) {
        std::string name = " " + entry["name"].get<std::string>() + " ";
        std::ranges::transform(name, name.begin(),
                               [](unsigned char c) { return std::isalnum(c) ? std::tolower(c) : ' '; });
        const bool whole = name.find(" ain ") != std::string::npos;
        const bool beginning = name.find(" ain") != std::string::npos;
        ranks.push_back(name == " ain " ? 0 : whole ? 1 : beginning ? 2 : 3);
    }
    EXPECT_TRUE(std::ranges::is_sorted(ranks)) << found.dump(1);
    EXPECT_EQ(ranks.back(), 3) << "Bahrain holds it inside a word";
    EXPECT_LT(ranks.front(), 3);
}

TEST_F(CatalogSearchCommand, PutsLiveSystemsBeforeDeprecatedOnesOfTheSameRank)
{
    std::vector<bool> deprecated;
    for (const Json& entry : search({"NAD83", "UTM", "zone", "19N", "--deprecated"}))
        deprecated.push_back(entry["deprecated"]);
    EXPECT_NE(std::ranges::find(deprecated, true), deprecated.end());
    EXPECT_TRUE(std::ranges::is_sorted(deprecated));
    EXPECT_EQ(codes({"3785", "--deprecated"}).front(), "EPSG:3785") << "an exact code comes first all the same";
}

TEST_F(CatalogSearchCommand, AcceptsABareNumberAndOtherNotationsOfACode)
{
    for (const char* text :
         {"25832", "urn:ogc:def:crs:EPSG::25832", "URN:OGC:DEF:CRS:EPSG:9.8.15:25832", "urn:x-ogc:def:crs:EPSG::25832",
          "http://www.opengis.net/def/crs/EPSG/0/25832", "https://www.opengis.net/def/crs/EPSG/0/25832"})
        EXPECT_EQ(codes({text}), std::vector<std::string>{"EPSG:25832"}) << text;
    EXPECT_EQ(codes({"urn:ogc:def:crs:OGC:1.3:CRS84"}).front(), "OGC:CRS84");
    EXPECT_EQ(runForJson({"catalog", "show", "urn:ogc:def:crs:EPSG::25832"})["code"], "EPSG:25832");
}

TEST_F(CatalogSearchCommand, ShowsTheAreaOfUseWithItsBounds)
{
    const Json area = search({"EPSG:28992"})[0]["areaOfUse"];
    EXPECT_EQ(area,
              (Json{{"name", "Netherlands - onshore, including Waddenzee, Dutch Wadden Islands and 12-mile offshore "
                             "coastal zone."},
                    {"bounds", {3.2, 50.75, 7.22, 53.7}}}));
    EXPECT_EQ(area["name"], runForJson({"catalog", "show", "EPSG:28992"})["areaOfUse"]);
    EXPECT_THAT(run({"catalog", "search", "EPSG:28992"}).output,
                testing::StartsWith("EPSG:28992  projected  Amersfoort / RD New  Netherlands - onshore, "));
    EXPECT_EQ(search({"LOCAL:FOOT"})[0]["areaOfUse"],
              (Json{{"name", "Anywhere: a site's own plane"}, {"bounds", nullptr}}));
}

TEST_F(CatalogSearchCommand, AtAPlace_FindsOnlySystemsForUseThere)
{
    const std::vector<std::string> berlin = codes({"ETRS89", "UTM", "--at", "52.5,13.4"});
    EXPECT_LT(place(berlin, "EPSG:25833"), static_cast<std::ptrdiff_t>(berlin.size()));
    EXPECT_EQ(place(berlin, "EPSG:25832"), static_cast<std::ptrdiff_t>(berlin.size()));
    for (const Json& entry : search({"--at", "-33.9,18.4"})) {
        const Json bounds = entry["areaOfUse"]["bounds"];
        EXPECT_TRUE(bounds[1] <= -33.9 && -33.9 <= bounds[3]) << entry;
        EXPECT_TRUE(bounds[0] > bounds[2] || (bounds[0] <= 18.4 && 18.4 <= bounds[2])) << entry;
    }
}

TEST_F(CatalogSearchCommand, AtAPlace_CountsAreasAcrossTheAntimeridian)
{
    for (const char* there : {"-17,179", "-17,-179.5", "-17,180", "-17,-180"})
        EXPECT_EQ(codes({"EPSG:3460", "--at", there}).size(), 1U) << there; // Fiji 1986 / Fiji Map Grid
    for (const char* elsewhere : {"-17,0", "-17,170", "-17,-170"})
        EXPECT_THAT(errorsOf({"EPSG:3460", "--at", elsewhere}),
                    HasSubstr("the area of use of none of the 1 system that match contains it"));
}

TEST_F(CatalogSearchCommand, InABox_FindsOnlySystemsForUseInAllOfIt)
{
    EXPECT_EQ(codes({"EPSG:28992", "--bbox", "4,51,7,53"}).size(), 1U);
    EXPECT_EQ(codes({"EPSG:28992", "--bbox", "3.2,50.75,7.22,53.7"}).size(), 1U) << "exactly its area";
    EXPECT_EQ(runForJson({"catalog", "search", "EPSG:28992", "--bbox", "4,51,8,53"}, 3), Json::array());
    EXPECT_EQ(codes({"EPSG:3460", "--bbox", "179,-18,-179,-17"}).size(), 1U);
    EXPECT_EQ(runForJson({"catalog", "search", "EPSG:3460", "--bbox", "-179,-18,179,-17"}, 3), Json::array())
        << "the long way round the Earth";
    EXPECT_EQ(codes({"EPSG:3857", "--bbox", "179,-18,-179,-17"}).size(), 1U);
}

TEST_F(CatalogSearchCommand, InAnArea_FindsTheSystemsWhoseAreaHasTheWords)
{
    const Json oman = search({"UTM", "--area", "oman onshore"});
    ASSERT_FALSE(oman.empty());
    for (const Json& entry : oman)
        EXPECT_THAT(entry["areaOfUse"]["name"].get<std::string>(), HasSubstr("Oman")) << "not Romania";
    EXPECT_EQ(search({"UTM", "--area", "oman onshore", "--limit", "2"}).size(), 2U);
}

TEST_F(CatalogSearchCommand, FiltersAloneNeedNoText)
{
    EXPECT_GT(codes({"--at", "52.5,13.4", "--kind", "3"}).size(), 10U);
    EXPECT_GT(codes({"--kind", "4"}).size(), 10U);
    EXPECT_EQ(codes({"--authority", "LOCAL"}).size(), 3U);
}

TEST_F(CatalogSearchCommand, SuggestsSystemsForAMisspeltWord)
{
    const std::string errors = errorsOf({"Amersfort", "RD", "Nwe"});
    EXPECT_THAT(errors,
                testing::StartsWith("orvelcs: catalog search: Amersfort RD Nwe: nothing matches; the nearest "));
    EXPECT_THAT(errors, HasSubstr("EPSG:28992 (Amersfoort / RD New)"));
    EXPECT_THAT(errorsOf({"--area", "Germny", "UTM"}), HasSubstr("--area: the area of use of none of the "));
    EXPECT_THAT(errorsOf({"--area", "Germny", "UTM"}), HasSubstr("the nearest is germany\n"));
}

TEST_F(CatalogSearchCommand, SuggestsNamesByTheirWordsAndNotByPartsOfThem)
{
    const ProgramResult inside = run({"catalog", "show", "mersfoort"});
    EXPECT_EQ(inside.status, 3);
    EXPECT_THAT(inside.errors, HasSubstr("(Amersfoort")) << "one letter is missing";
    EXPECT_THAT(run({"catalog", "show", "ersfoor"}).errors, testing::EndsWith("the catalog has no such code\n"));
    EXPECT_THAT(run({"catalog", "show", "EPSG:25823"}).errors,
                HasSubstr("the catalog has no such code; the nearest are EPSG:25832 (ETRS89 / UTM zone 32N), "));
}

TEST_F(CatalogSearchCommand, NamesTheDeprecatedSystemThatAloneMatches)
{
    EXPECT_EQ(
        errorsOf({"EPSG:3785"}),
        "orvelcs: catalog search: EPSG:3785: nothing matches but what is deprecated: --deprecated lists EPSG:3785 "
        "(Popular Visualisation CRS / Mercator)\n");
}

TEST_F(CatalogSearchCommand, PlacesThatAreNone_AreWrongUsage)
{
    const std::vector<std::pair<Arguments, std::string>> cases{
        {{"--at", "52"}, "--at: expected LAT,LON in degrees, found 52"},
        {{"--at", "52,x"}, "--at: expected LAT,LON in degrees, found 52,x"},
        {{"--at", "52,nan"}, "--at: expected LAT,LON in degrees, found 52,nan"},
        {{"--at", "113.4,52"}, "--at: a latitude is from -90 to 90, found 113.4; the order is LAT,LON"},
        {{"--bbox", "1,2,3"}, "--bbox: expected W,S,E,N in degrees, found 1,2,3"},
        {{"--bbox", "1,2,3,4,5"}, "--bbox: expected W,S,E,N in degrees, found 1,2,3,4,5"},
        {{"--bbox", "1,2,181,4"}, "--bbox: a longitude is from -180 to 180, found 181; the order is W,S,E,N"},
        {{"--bbox", "1,4,3,2"}, "--bbox: the south 4 is north of the north 2; the order is W,S,E,N"},
    };
    for (const auto& [arguments, message] : cases)
        expectWrongUsage(run(concatenate({"catalog", "search"}, arguments)), "orvelcs: catalog search: " + message);
}

} // namespace
} // namespace Tests
