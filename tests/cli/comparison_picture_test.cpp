// The pictures of a comparison: what they hold, and where there is none.
#include <fmt/format.h>

#include "transformation_comparison.h"

namespace Tests {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class ComparisonPicture : public ComparisonTest {
protected:
    /// The file that the comparison writes.
    std::string picture(const std::string& source, const std::string& target, const std::string& name,
                        const Arguments& options = {}) const
    {
        const ProgramResult result = compare(source, target, concatenate({"-o", name, "--force"}, options));
        EXPECT_EQ(result.status, 0) << result.errors;
        return contents(name);
    }
    /// Expects the failure, and that it has left no file.
    void expectNoPicture(const std::string& source, const std::string& target, const Arguments& options, int status,
                         const testing::Matcher<const std::string&>& errors) const
    {
        for (const char* name : {"none.svg", "none.html"}) {
            const ProgramResult result = compare(source, target, concatenate({"-o", name}, options));
            EXPECT_EQ(result.status, status) << result.errors;
            EXPECT_THAT(result.errors, errors);
            EXPECT_FALSE(std::filesystem::exists(path(name)));
        }
    }
};

TEST_F(ComparisonPicture, NamesBothCandidatesThePointAndTheVersions)
{
    const std::string svg = picture("EPSG:4230", "EPSG:4326", "ed50.svg", {"--between", "EPSG:1133", "EPSG:1275"});
    for (const char* text : {"ED50 (EPSG:4230) to WGS 84 (EPSG:4326)", ">EPSG:1133 ED50 to WGS 84 (1)<",
                             ">EPSG:1275 ED50 to WGS 84 (17)<", ">Accuracy: 10 m; number ",
                             ">Distance between A and B, in metres<", ">At 55.22\u00B0N 16.255\u00B0E: ", ">PROJ "})
        EXPECT_THAT(svg, HasSubstr(text));
}

TEST_F(ComparisonPicture, PointHasTheDistanceOfTheTable)
{
    const Arguments two = {"--between", "EPSG:1133", "EPSG:1275", "--at", "46,2"};
    const Json comparison = compareForJson("EPSG:4230", "EPSG:4326", concatenate(two, {"-o", "at.svg"}));
    EXPECT_EQ(comparison["output"], "at.svg");
    const std::string text = fmt::format("{:.3f}", comparison["candidates"][1]["distance"].get<double>());
    EXPECT_THAT(contents("at.svg"), HasSubstr(">At 46\u00B0N 2\u00B0E: " + text + " m<"));
}

TEST_F(ComparisonPicture, NeedsNothingFromElsewhere)
{
    EXPECT_THAT(picture("EPSG:4230", "EPSG:4326", "ed50.svg"),
                AllOf(StartsWith("<svg "), Not(HasSubstr("<script")), Not(HasSubstr("href")), Not(HasSubstr("url("))));
    EXPECT_THAT(picture("EPSG:4258", "EPSG:4326", "equal.html"),
                AllOf(StartsWith("<!DOCTYPE html>"), HasSubstr("default-src 'none'"), Not(HasSubstr("http://")),
                      Not(HasSubstr("https://")), Not(HasSubstr(" src="))));
}

TEST_F(ComparisonPicture, HasTheSameBytesEachTime)
{
    for (const char* name : {"one.html", "one.svg"})
        EXPECT_EQ(picture("EPSG:4258", "EPSG:4326", name), picture("EPSG:4258", "EPSG:4326", name));
    EXPECT_EQ(compare("EPSG:4258", "EPSG:4326", {"-o", "-"}).output, contents("one.svg"));
}

TEST_F(ComparisonPicture, PageHasAtMostOneAndAHalfMegabytes)
{
    constexpr std::size_t kMost = 1'500'000;
    EXPECT_LE(picture("EPSG:4230", "EPSG:4326", "page.html").size(), kMost);
}

TEST_F(ComparisonPicture, EqualCandidates_AgreeToTheMillimetre)
{
    EXPECT_THAT(picture("EPSG:4258", "EPSG:4326", "equal.svg"),
                HasSubstr(">A and B agree everywhere to the millimetre<"));
}

TEST_F(ComparisonPicture, PlacesWithoutADistance_AreLeftBlankAndInTheLegend)
{
    givenGrid("data");
    const Arguments two = {"--between", "EPSG:1241", "Ballpark geographic offset from NAD27 to NAD83"};
    EXPECT_THAT(picture("EPSG:4267", "EPSG:4269", "gaps.svg", concatenate(two, {"--at", "40,-100"})),
                AllOf(HasSubstr(">A or B gives no position<"), HasSubstr(">203.7")));
    EXPECT_THAT(picture("EPSG:4267", "EPSG:4269", "outside.svg", concatenate(two, {"--at", "30,-100"})),
                HasSubstr(">At 30\u00B0N 100\u00B0W: A or B gives no position<"));
    EXPECT_THAT(picture("EPSG:4267", "EPSG:4269", "empty.svg", concatenate(two, {"--bbox", "-90,30,-85,34"})),
                HasSubstr(">No distance: nowhere do both A and B give a position<"));
}

TEST_F(ComparisonPicture, BetterOnesThatLackAGrid_AreNamed)
{
    const Arguments place = {"--at", "40,-100"};
    for (const char* name : {"lacking.svg", "lacking.html"})
        EXPECT_THAT(picture("EPSG:4267", "EPSG:4326", name, place),
                    AllOf(HasSubstr("Better, but cannot be used here:"), HasSubstr("EPSG:8613")));
}

TEST_F(ComparisonPicture, AreasAcrossTheAntimeridianAndAroundAPole_AreDrawn)
{
    EXPECT_THAT(picture("EPSG:4720", "EPSG:4326", "fiji.svg"), HasSubstr("180\u00B0"));
    EXPECT_THAT(picture("EPSG:3413", "EPSG:4269", "north.svg", {"--bbox", "-180,75,180,90"}),
                HasSubstr("Lambert azimuthal equal-area"));
}

TEST_F(ComparisonPicture, PlaceWithAnExtent_IsWhatTheMapShows)
{
    const std::string part = picture("EPSG:4230", "EPSG:4326", "part.svg", {"--bbox", "5,45,10,50"});
    EXPECT_THAT(part, HasSubstr("centred on 47.5\u00B0N 7.5\u00B0E"));
}

TEST_F(ComparisonPicture, FewerThanTwoCandidates_LeaveNoPicture)
{
    const std::string prefix = "orvelcs: transformation compare: --output: a picture compares two candidates that can "
                               "be used, and there is ";
    expectNoPicture("EPSG:25832", "EPSG:25833", {}, 3, prefix + "only one\n");
    expectNoPicture("EPSG:4275", "EPSG:4258", {}, 3,
                    StartsWith(prefix + "only one; EPSG:15959 (ETRS89 to NTF (3)) needs the grid fr_ign_ntf_r93.tif"));
    expectNoPicture("ESRI:104903", "EPSG:4326", {}, 3, HasSubstr("nothing leads from one to the other"));
    expectNoPicture("EPSG:4275", "EPSG:4258", {"--between", "1", "2"}, 1, HasSubstr("fr_ign_ntf_r93.tif"));
}

TEST_F(ComparisonPicture, PlaceWithoutAMap_LeavesNoPicture)
{
    expectNoPicture("EPSG:2056", "EPSG:2193", {"--at", "47,8"}, 3,
                    HasSubstr("nothing in common that a map could show"));
    expectNoPicture("EPSG:4230", "EPSG:4326", {"--at", "-40,175"}, 3, HasSubstr("outside of the area of use of every"));
}

TEST_F(ComparisonPicture, UnknownSystems_LeaveNoPicture)
{
    expectNoPicture("EPSG:48078", "EPSG:4326", {}, 3, HasSubstr("the catalog has no such code"));
    givenDrawing("empty.qedb");
    expectNoPicture("@empty.qedb", "EPSG:4326", {}, 3, HasSubstr("has no coordinate system"));
}

TEST_F(ComparisonPicture, FileThatExists_IsNotOverwritten)
{
    given("here.svg", "mine");
    expectResult(compare("EPSG:4230", "EPSG:4326", {"-o", "here.svg"}), 1, "",
                 "orvelcs: transformation compare: here.svg: exists; --force overwrites it\n");
    EXPECT_EQ(contents("here.svg"), "mine");
    const ProgramResult result = compare("EPSG:4230", "EPSG:4326", {"-o", "nowhere/here.svg"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.errors, StartsWith("orvelcs: transformation compare: nowhere/here.svg: eFileWriteFailed"));
}

TEST_F(ComparisonPicture, OtherEndings_AreWrongUsage)
{
    expectWrongUsage(compare("EPSG:4230", "EPSG:4326", {"-o", "map.png"}),
                     "orvelcs: transformation compare: --output: expected a name that ends with .svg or .html, found "
                     "map.png");
    EXPECT_EQ(compare("EPSG:4230", "EPSG:4326", {"-o", "-", "--json"}).status, 2);
}

} // namespace
} // namespace Tests
