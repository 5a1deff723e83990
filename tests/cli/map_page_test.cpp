// The page of a map: the same map as the picture's, and a list whose entries it leads to.
#include "command_line_test.h"

namespace Tests {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class MapPage : public CommandLineTest {
protected:
    std::string page(const Arguments& systems) const
    {
        const ProgramResult result = run(concatenate({"--quiet", "map", "-o", "map.html", "--force"}, systems));
        EXPECT_EQ(result.status, 0) << result.errors;
        EXPECT_EQ(result.output, "");
        return contents("map.html");
    }
};

TEST_F(MapPage, NumbersAndEntriesAreLinksToEachOther)
{
    const std::string html = page({"EPSG:25832", "EPSG:2193"});
    for (const char* number : {"1", "2"})
        EXPECT_THAT(html, AllOf(HasSubstr(std::string("id=\"area-") + number + "\" href=\"#system-" + number + "\""),
                                HasSubstr(std::string("<li id=\"system-") + number + "\""),
                                HasSubstr(std::string("<a href=\"#area-") + number + "\"")));
    EXPECT_THAT(html, AllOf(HasSubstr("<strong>EPSG:2193</strong>"), HasSubstr("NZGD2000 / New Zealand Transverse")));
}

TEST_F(MapPage, NeedsNothingFromElsewhereAndIsTheSameEachTime)
{
    const std::string html = page({"EPSG:25832"});
    EXPECT_THAT(html, AllOf(StartsWith("<!DOCTYPE html>"), HasSubstr("default-src 'none'"), Not(HasSubstr("http://")),
                            Not(HasSubstr("https://")), Not(HasSubstr(" src="))));
    EXPECT_EQ(page({"EPSG:25832"}), html);
}

TEST_F(MapPage, SystemsAreMarkedAndEscaped)
{
    givenDrawingWith("R&D.qedb", "EPSG:25832");
    const std::string html = page({"@R&D.qedb", "EPSG:3408", "LOCAL:METRE"});
    EXPECT_THAT(html, AllOf(HasSubstr("R&amp;D.qedb"), Not(HasSubstr("R&D")), HasSubstr("<em>deprecated</em>"),
                            HasSubstr("(without bounds)")));
}

TEST_F(MapPage, FailureLeavesNoPage)
{
    EXPECT_EQ(run({"map", "EPSG:25899", "-o", "map.html"}).status, 3);
    EXPECT_EQ(run({"map", "EPSG:25832", "-o", "nowhere/map.html"}).status, 1);
    EXPECT_EQ(files(), std::vector<std::string>{});
}

} // namespace
} // namespace Tests
