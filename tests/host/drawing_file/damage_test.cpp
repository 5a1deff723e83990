// Every byte of a drawing damaged, every page exchanged or emptied, the file cut anywhere: it is refused, or what is
// read is what was written. It is never changed, and nothing crashes.
#include <algorithm>

#include "embedded/host/drawing_file/drawing_dump.h"
#include "host/drawing_file/drawing_file_test.h"
#include "host/drawing_file/golden_drawing.h"

namespace Tests {
namespace {

constexpr std::size_t kPageSize = 4096;

class DamagedDrawing : public DrawingFileTest {
protected:
    DamagedDrawing()
    {
        makeFromSql(file, goldenSql("everything"));
        bytes = readFile(file);
    }
    enum class Result { same, refused, different };

    static Expected<std::string> textOf(const Expected<Database>& database)
    {
        if (!database)
            return Embedded::failure(database.error());
        return Embedded::dumpDrawing(**database);
    }
    static Result resultOf(const Expected<Database>& database)
    {
        const Expected<std::string> text = textOf(database);
        if (!text)
            return text.error().message.empty() ? Result::different : Result::refused;
        return *text == goldenText("everything") ? Result::same : Result::different;
    }
    static Result inMemory(const std::string& damaged) { return resultOf(Embedded::loadDrawingFromBytes(damaged)); }
    Result inFile(const std::string& damaged) const
    {
        writeFile(file, damaged);
        const Result found = resultOf(load(file, DrawingAccess::changing));
        EXPECT_TRUE(readFile(file) == damaged) << "reading has changed it";
        EXPECT_EQ(folder.names(), std::set<std::string>{"a.qedb"});
        return found;
    }

    std::string bytes;
};

TEST_F(DamagedDrawing, AtAnyByte_IsRefusedOrReadRight)
{
    std::size_t refused = 0;
    std::size_t number = 0;
    for (std::size_t at = 0; at < bytes.size(); ++at) {
        // Empty space is long and all alike.
        const bool isEmptySpace = bytes[at] == 0 && at + 1 < bytes.size() && bytes[at + 1] == 0;
        const std::size_t stride = isEmptySpace ? 61 : 1;
        if (at % stride != 0 || number++ % (3 * ORVEL_TEXT_STRIDE) != 0)
            continue;
        std::string damaged = bytes;
        damaged[at] = static_cast<char>(damaged[at] ^ 1 << at % 8);
        const Result found = number % 50 == 0 ? inFile(damaged) : inMemory(damaged);
        ASSERT_NE(found, Result::different) << "at byte " << at;
        refused += found == Result::refused ? 1U : 0U;
    }
    EXPECT_GT(refused, number / (6 * ORVEL_TEXT_STRIDE));
}

TEST_F(DamagedDrawing, CutAnywhere_IsRefusedOrReadRight)
{
    for (std::size_t length = 0; length < bytes.size(); length += length < 600 ? 37 : kPageSize / 4 * 3) {
        EXPECT_NE(inFile(bytes.substr(0, length)), Result::different) << length;
    }
    for (std::size_t length = kPageSize; length < bytes.size(); length += kPageSize)
        EXPECT_EQ(inFile(bytes.substr(0, length)), Result::refused) << length;
}

TEST_F(DamagedDrawing, WithMoreBehindItsEnd_IsReadRight)
{
    for (const std::size_t more : {std::size_t{1}, std::size_t{100}, kPageSize, 3 * kPageSize})
        EXPECT_EQ(inFile(bytes + std::string(more, 'x')), Result::same) << more;
}

TEST_F(DamagedDrawing, WithAPageOfZerosOrOfAnotherPage_IsRefusedOrReadRight)
{
    const std::size_t pages = bytes.size() / kPageSize;
    std::size_t refused = 0;
    for (std::size_t page = 0; page < pages; ++page) {
        std::string damaged = bytes;
        damaged.replace(page * kPageSize, kPageSize, std::string(kPageSize, '\0'));
        ASSERT_NE(inFile(damaged), Result::different) << "zeros in page " << page;
        for (std::size_t other = 0; other<pages; other += ORVEL_TEXT_STRIDE> 1 ? 5 : 1) {
            damaged.replace(page * kPageSize, kPageSize, bytes, other * kPageSize, kPageSize);
            const Result found = inMemory(damaged);
            ASSERT_NE(found, Result::different) << "page " << other << " in the place of " << page;
            refused += found == Result::refused ? 1U : 0U;
        }
    }
    EXPECT_GT(refused, pages);
}

TEST_F(DamagedDrawing, WithTwoPagesExchanged_IsRefusedOrReadRight)
{
    const std::size_t pages = bytes.size() / kPageSize;
    for (std::size_t page = 1; page < pages; ++page) {
        std::string damaged = bytes;
        std::swap_ranges(damaged.begin() + static_cast<std::ptrdiff_t>((page - 1) * kPageSize),
                         damaged.begin() + static_cast<std::ptrdiff_t>(page * kPageSize),
                         damaged.begin() + static_cast<std::ptrdiff_t>(page * kPageSize));
        ASSERT_NE(inFile(damaged), Result::different) << page;
    }
}

/// Pages of an older state of the same drawing, as a disk leaves them that writes in no order.
TEST_F(DamagedDrawing, WithPagesOfAnOlderState_IsNeverAMixture)
{
    // The same pages in use: one number was changed.
    changeBySql(file, "UPDATE resbufs SET value = 2 WHERE value = 1 AND code = 1071");
    const std::string newer = readFile(file);
    ASSERT_EQ(newer.size(), bytes.size());
    const std::string newerText = contentsOf(*loaded());
    for (std::size_t page = 0; page < bytes.size() / kPageSize; ++page) {
        std::string mixed = bytes;
        mixed.replace(page * kPageSize, kPageSize, newer, page * kPageSize, kPageSize);
        const Expected<std::string> text = textOf(Embedded::loadDrawingFromBytes(mixed));
        EXPECT_TRUE(!text || *text == newerText || *text == goldenText("everything")) << page;
    }
}

} // namespace
} // namespace Tests
