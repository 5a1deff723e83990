// Damages every byte of a drawing file, swaps and clears its pages and truncates it. A damaged file is refused or read
// as it was written. Reading never changes it.
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
        createFromSql(file, goldenSql("everything"));
        bytes = readFile(file);
    }
    enum class Result { same, refused, different };

    static Expected<std::string> dump(const Expected<Database>& database)
    {
        if (!database)
            return Embedded::failure(database.error());
        return Embedded::dumpDrawing(**database);
    }
    static Result compare(const Expected<Database>& database)
    {
        const Expected<std::string> text = dump(database);
        if (!text)
            return text.error().message.empty() ? Result::different : Result::refused;
        return *text == goldenText("everything") ? Result::same : Result::different;
    }
    static Result loadFromMemory(const std::string& damaged)
    {
        return compare(Embedded::loadDrawingFromBytes(damaged));
    }
    Result loadFromFile(const std::string& damaged) const
    {
        writeFile(file, damaged);
        const Result result = compare(load(file, DrawingAccess::changing));
        EXPECT_TRUE(readFile(file) == damaged) << "reading has changed the file";
        EXPECT_EQ(folder.names(), std::set<std::string>{"a.qedb"});
        return result;
    }

    std::string bytes;
};

TEST_F(DamagedDrawing, DrawingWithAnyDamagedByte_IsRefusedOrReadCorrectly)
{
    std::size_t refused = 0;
    std::size_t number = 0;
    for (std::size_t at = 0; at < bytes.size(); ++at) {
        // Unused bytes are many, and all alike.
        const bool isUnused = bytes[at] == 0 && at + 1 < bytes.size() && bytes[at + 1] == 0;
        const std::size_t stride = isUnused ? 61 : 1;
        if (at % stride != 0 || number++ % (3 * ORVEL_TEXT_STRIDE) != 0)
            continue;
        std::string damaged = bytes;
        damaged[at] = static_cast<char>(damaged[at] ^ 1 << at % 8);
        const Result result = number % 50 == 0 ? loadFromFile(damaged) : loadFromMemory(damaged);
        ASSERT_NE(result, Result::different) << "at byte " << at;
        refused += result == Result::refused ? 1U : 0U;
    }
    EXPECT_GT(refused, number / (6 * ORVEL_TEXT_STRIDE));
}

TEST_F(DamagedDrawing, TruncatedDrawing_IsRefusedOrReadCorrectly)
{
    for (std::size_t length = 0; length < bytes.size(); length += length < 600 ? 37 : kPageSize / 4 * 3) {
        EXPECT_NE(loadFromFile(bytes.substr(0, length)), Result::different) << length;
    }
    for (std::size_t length = kPageSize; length < bytes.size(); length += kPageSize)
        EXPECT_EQ(loadFromFile(bytes.substr(0, length)), Result::refused) << length;
}

TEST_F(DamagedDrawing, BytesBehindTheEnd_AreIgnored)
{
    for (const std::size_t more : {std::size_t{1}, std::size_t{100}, kPageSize, 3 * kPageSize})
        EXPECT_EQ(loadFromFile(bytes + std::string(more, 'x')), Result::same) << more;
}

TEST_F(DamagedDrawing, DrawingWithAZeroedOrCopiedPage_IsRefusedOrReadCorrectly)
{
    const std::size_t pages = bytes.size() / kPageSize;
    std::size_t refused = 0;
    for (std::size_t page = 0; page < pages; ++page) {
        std::string damaged = bytes;
        damaged.replace(page * kPageSize, kPageSize, std::string(kPageSize, '\0'));
        ASSERT_NE(loadFromFile(damaged), Result::different) << "zeros in page " << page;
        for (std::size_t other = 0; other<pages; other += ORVEL_TEXT_STRIDE> 1 ? 5 : 1) {
            damaged.replace(page * kPageSize, kPageSize, bytes, other * kPageSize, kPageSize);
            const Result result = loadFromMemory(damaged);
            ASSERT_NE(result, Result::different) << "page " << other << " in the place of " << page;
            refused += result == Result::refused ? 1U : 0U;
        }
    }
    EXPECT_GT(refused, pages);
}

TEST_F(DamagedDrawing, DrawingWithTwoSwappedPages_IsRefusedOrReadCorrectly)
{
    const std::size_t pages = bytes.size() / kPageSize;
    for (std::size_t page = 1; page < pages; ++page) {
        std::string damaged = bytes;
        std::swap_ranges(damaged.begin() + static_cast<std::ptrdiff_t>((page - 1) * kPageSize),
                         damaged.begin() + static_cast<std::ptrdiff_t>(page * kPageSize),
                         damaged.begin() + static_cast<std::ptrdiff_t>(page * kPageSize));
        ASSERT_NE(loadFromFile(damaged), Result::different) << page;
    }
}

/// A disk that writes pages in any order can leave pages of an older state.
TEST_F(DamagedDrawing, DrawingWithPagesOfAnOlderState_IsNeverReadAsAMixture)
{
    // Changes one number, so that the same pages stay in use.
    changeBySql(file, "UPDATE resbufs SET value = 2 WHERE value = 1 AND code = 1071");
    const std::string newer = readFile(file);
    ASSERT_EQ(newer.size(), bytes.size());
    const std::string newerText = drawingContents(*loadFile());
    for (std::size_t page = 0; page < bytes.size() / kPageSize; ++page) {
        std::string mixed = bytes;
        mixed.replace(page * kPageSize, kPageSize, newer, page * kPageSize, kPageSize);
        const Expected<std::string> text = dump(Embedded::loadDrawingFromBytes(mixed));
        EXPECT_TRUE(!text || *text == newerText || *text == goldenText("everything")) << page;
    }
}

} // namespace
} // namespace Tests
