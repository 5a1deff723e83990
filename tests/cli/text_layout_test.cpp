// The parts of the program that lay out help and tables.
#include <gtest/gtest.h>

#include "orvelcs/cli/display_width.h"
#include "orvelcs/cli/text_blocks.h"

namespace Tests {
namespace {

using Orvelcs::displayWidth;
using Orvelcs::layOutBlocks;
using Orvelcs::parseTextBlocks;
using Orvelcs::truncated;

TEST(TextLayout, WidthOfAText_CountsColumns)
{
    EXPECT_EQ(displayWidth(""), 0U);
    EXPECT_EQ(displayWidth("Réunion"), 7U);
    EXPECT_EQ(displayWidth("Re\xCC\x81union"), 7U); // an accent of its own takes no column
    EXPECT_EQ(displayWidth("東京"), 4U);
    EXPECT_EQ(displayWidth("Ω…"), 2U);
}

TEST(TextLayout, LongText_IsCutToItsColumns)
{
    EXPECT_EQ(truncated("abcdef", 6), "abcdef");
    EXPECT_EQ(truncated("abcdef", 5), "abcd…");
    EXPECT_EQ(truncated("abcdef", 1), "…");
    EXPECT_EQ(truncated("abcdef", 0), "");
    EXPECT_EQ(truncated("東京都", 5), "東京…");
    EXPECT_EQ(truncated("東京都", 4), "東…"); // half a letter cannot be shown
    EXPECT_EQ(truncated("re\xCC\x81union", 3), "re\xCC\x81…");
}

TEST(TextLayout, Paragraphs_AreWrappedAndKeptApart)
{
    EXPECT_EQ(layOutBlocks(parseTextBlocks("one two\nthree four\n\nfive"), 9), "one two\nthree\nfour\n\nfive\n");
    EXPECT_EQ(layOutBlocks(parseTextBlocks("a wordlongerthanthewidth b"), 9), "a\nwordlongerthanthewidth\nb\n");
    EXPECT_EQ(layOutBlocks(parseTextBlocks(""), 9), "");
}

TEST(TextLayout, Items_AreAlignedAndLiteralLinesKept)
{
    EXPECT_EQ(layOutBlocks(parseTextBlocks("List:\n  a  first of the two\n  bb  second\n\n  code  \n"), 18),
              "List:\n"
              "  a   first of the\n"
              "      two\n"
              "  bb  second\n"
              "  code  \n");
    EXPECT_EQ(layOutBlocks(parseTextBlocks("  longterm  meaning"), 18), "  longterm\n          meaning\n");
}

} // namespace
} // namespace Tests
