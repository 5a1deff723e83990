// Lines that are cut out of blocks of any size.
#include "orvelcs/cli/line_reader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>
#include <string>
#include <vector>

namespace Tests {
namespace {

using Orvelcs::LineReader;

struct Line {
    std::string text;
    bool isTooLong;
    std::size_t number;

    bool operator==(const Line&) const = default;
};

/// Gives the bytes out in portions of a length, however many are asked for.
LineReader::Source portions(const std::string& bytes, std::size_t length)
{
    return [bytes, length, position = std::size_t{0}](char* to, std::size_t room) mutable {
        const std::size_t count = std::min({length, room, bytes.size() - position});
        std::copy_n(bytes.data() + position, count, to);
        position += count;
        return count;
    };
}

std::vector<Line> linesThrough(LineReader reader)
{
    std::vector<Line> lines;
    while (reader.readBlock())
        while (reader.nextLine())
            lines.push_back({std::string(reader.line()), reader.isTooLong(), reader.number()});
    EXPECT_FALSE(reader.readBlock());
    EXPECT_FALSE(reader.nextLine());
    return lines;
}

/// Expects the lines for blocks of every size up to twice the text, and for every length of what arrives at once.
void expectLines(const std::string& bytes, const std::vector<Line>& expected)
{
    for (std::size_t length = 1; length <= 2 * bytes.size() + 1; ++length) {
        EXPECT_EQ(linesThrough(LineReader(portions(bytes, bytes.size()), length)), expected) << "blocks of " << length;
        EXPECT_EQ(linesThrough(LineReader(portions(bytes, length))), expected) << "portions of " << length;
    }
}

TEST(LineReader, LinesAreTheSameWhereverBlocksEnd)
{
    using namespace std::string_literals;
    expectLines("", {});
    expectLines("\n", {{"", false, 1}});
    expectLines("0 9\n\n1 x\n", {{"0 9", false, 1}, {"", false, 2}, {"1 x", false, 3}});
    expectLines("0 9\r\n1 9\r\n", {{"0 9\r", false, 1}, {"1 9\r", false, 2}});
    expectLines("0 9\n1 9", {{"0 9", false, 1}, {"1 9", false, 2}});
    expectLines("0 9\n\r", {{"0 9", false, 1}, {"\r", false, 2}});
    expectLines("\0\n0\0 9\n\0"s, {{"\0"s, false, 1}, {"0\0 9"s, false, 2}, {"\0"s, false, 3}});
}

TEST(LineReader, AByteOrderMark_IsRemovedFromTheFirstLineAlone)
{
    expectLines("\xEF\xBB\xBF"
                "0 9\n\xEF\xBB\xBF",
                {{"0 9", false, 1}, {"\xEF\xBB\xBF", false, 2}});
    expectLines("\xEF\xBB\n", {{"\xEF\xBB", false, 1}});
    expectLines("\xEF\xBB\xBF", {{"", false, 1}});
}

TEST(LineReader, OnlyTheBeginningOfALineThatIsTooLong_IsKept)
{
    constexpr std::size_t kMost = 4096;
    const std::string longest(kMost, 'x');
    for (const std::size_t block : {std::size_t{1}, std::size_t{1000}, kMost, kMost + 1, LineReader::kBlockInBytes}) {
        for (const std::size_t length :
             {kMost + 1, 2 * kMost, LineReader::kBlockInBytes, 3 * LineReader::kBlockInBytes}) {
            const std::string text = longest + "\n" + std::string(length, 'x') + "\n0 9\n" + std::string(length, 'x');
            EXPECT_EQ(
                linesThrough(LineReader(portions(text, text.size()), block, kMost)),
                (std::vector<Line>{{longest, false, 1}, {longest, true, 2}, {"0 9", false, 3}, {longest, true, 4}}))
                << length << " bytes in blocks of " << block;
        }
    }
}

TEST(LineReader, TheSourceIsAskedOnlyWhenAllCompleteLinesAreHandedOut)
{
    int calls = 0;
    LineReader reader([&](char* to, std::size_t) -> std::size_t {
        const std::string portion = calls++ == 0 ? "1\n2\n3" : "4\n";
        if (calls > 2)
            throw std::runtime_error("not readable");
        std::ranges::copy(portion, to);
        return portion.size();
    });
    ASSERT_TRUE(reader.readBlock());
    EXPECT_TRUE(reader.nextLine());
    EXPECT_TRUE(reader.nextLine());
    EXPECT_FALSE(reader.nextLine());
    EXPECT_EQ(calls, 1);
    ASSERT_TRUE(reader.readBlock());
    ASSERT_TRUE(reader.nextLine());
    EXPECT_EQ(reader.line(), "34");
    EXPECT_THROW(static_cast<void>(reader.readBlock()), std::runtime_error);
}

} // namespace
} // namespace Tests
