// SVG as text: escaped, with numbers of a fixed number of digits.
#include "orvelcs/output/svg_writer.h"

#include <gtest/gtest.h>

#include "orvelcs/output/svg_path.h"
#include "orvelcs/output/text_width.h"

namespace Tests {
namespace {

TEST(SvgWriter, Numbers_HaveAtMostTwoDigitsBehindThePoint)
{
    EXPECT_EQ(Orvelcs::svgNumber(1), "1");
    EXPECT_EQ(Orvelcs::svgNumber(100), "100");
    EXPECT_EQ(Orvelcs::svgNumber(1.5), "1.5");
    EXPECT_EQ(Orvelcs::svgNumber(-2.346), "-2.35");
    EXPECT_EQ(Orvelcs::svgNumber(-0.001), "0");
    EXPECT_EQ(Orvelcs::svgNumber(1e7), "10000000");
}

TEST(SvgWriter, TextAndAttributes_AreEscaped)
{
    Orvelcs::SvgWriter svg;
    svg.open("g", {{"class", "a\"b"}});
    svg.text("text", {{"x", 1.25}}, "<script>&\x01\xFF</script>");
    svg.element("rect", {});
    svg.close();
    EXPECT_EQ(svg.result(), "<g class=\"a&quot;b\">\n"
                            " <text x=\"1.25\">&lt;script&gt;&amp;\xEF\xBF\xBD\xEF\xBF\xBD&lt;/script&gt;</text>\n"
                            " <rect/>\n"
                            "</g>\n");
}

TEST(SvgWriter, Root_HasViewBoxTitleAndDescription)
{
    Orvelcs::SvgWriter svg;
    Orvelcs::openSvg(svg, 100, 50.5, "A & B", "what it shows", ".a{fill:red}\n");
    svg.close();
    EXPECT_EQ(svg.result(),
              "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 100 50.5\" width=\"100\" height=\"50.5\" "
              "role=\"img\" aria-labelledby=\"title description\">\n"
              " <title id=\"title\">A &amp; B</title>\n <desc id=\"description\">what it shows</desc>\n"
              "<style>\n.a{fill:red}\n</style>\n</svg>\n");
}

TEST(SvgPath, Lines_GoOnInTenths)
{
    EXPECT_EQ(Orvelcs::svgPath({{{1, 2}, {1.04, 2.04}, {-0.25, 2.5}, {3, 2.5}}}, Orvelcs::PathEnd::open),
              "M1,2l-1.3,.5l3.3,0");
    EXPECT_EQ(Orvelcs::svgPath({{{0, 0}, {0.1, 0}}, {}, {{-0.1, 10}, {5, 10}}}, Orvelcs::PathEnd::closed),
              "M0,0l.1,0zM-.1,10l5.1,0z");
}

TEST(TextWidth, GrowsWithTheTextAndTheFont)
{
    EXPECT_GT(Orvelcs::textWidth("WW", 10), Orvelcs::textWidth("ii", 10));
    EXPECT_DOUBLE_EQ(Orvelcs::textWidth("abc", 20), 2 * Orvelcs::textWidth("abc", 10));
    EXPECT_GE(Orvelcs::textWidth("\xE5\x9C\xB0", 10), 10);
}

TEST(WrapText, BreaksAtBlanksAndCutsWhatDoesNotFit)
{
    using Lines = std::vector<std::string>;
    const double width = Orvelcs::textWidth("aaaaaaaa", 10) + 0.1;
    EXPECT_EQ(Orvelcs::wrapText("", 10, width, 3), Lines{});
    EXPECT_EQ(Orvelcs::wrapText("aaa aaa", 10, width, 3), (Lines{"aaa aaa"}));
    EXPECT_EQ(Orvelcs::wrapText("aaa aaa aaa", 10, width, 3), (Lines{"aaa aaa", "aaa"}));
    EXPECT_EQ(Orvelcs::wrapText("aaaaaaaaaaa", 10, width, 3), (Lines{"aaaaaaaa", "aaa"}));
    EXPECT_EQ(Orvelcs::wrapText("aaa aaaaaaaa aaa", 10, width, 2), (Lines{"aaa", "aaaaaa\u2026"}));
    EXPECT_EQ(Orvelcs::wrapText("aaaaaaaa", 10, width, 1), (Lines{"aaaaaaaa"}));
}

} // namespace
} // namespace Tests
