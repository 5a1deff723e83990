// Checks whole drawing files, and salvages what can be read of damaged ones.
#include <algorithm>
#include <vector>

#include "embedded/host/drawing_file/drawing_check.h"
#include "embedded/host/drawing_file/drawing_salvage.h"
#include "host/drawing_file/drawing_file_test.h"

namespace Tests {
namespace {

class CheckedDrawing : public DrawingFileTest {
protected:
    CheckedDrawing()
    {
        Drawing drawing;
        drawing.withLegacyCode(L"EPSG:25832").withXrecord({{300, L"text"}, {1040, 2.5}, {310, Bytes{1}}}, L"values");
        drawing.withDictionary(L"dictionary").withGeoData(L"geodata");
        writeDrawing(drawing); // 5: application, 6: values, 7: dictionary, 8: GeoData
    }

    /// Each fault as "place: message"; the outcome of the check if it could not be made.
    std::vector<std::string> faults() const
    {
        const Expected<Embedded::DrawingFaults> found = Embedded::checkDrawing(file, lockWait(0));
        if (!found)
            return {outcome(found)};
        std::vector<std::string> texts;
        for (const Embedded::DrawingFault& fault : found->reported)
            texts.push_back(fault.place + ": " + fault.message);
        EXPECT_EQ(found->count, found->reported.size());
        return texts;
    }
    /// The faults after a change with valid checksums. The check must not change the file.
    std::vector<std::string> faultsAfter(const std::string& sql) const
    {
        changeBySql(file, sql);
        const std::string before = readFile(file);
        std::vector<std::string> result = faults();
        EXPECT_TRUE(readFile(file) == before);
        return result;
    }
    static bool contains(const std::vector<std::string>& texts, const std::string& text)
    {
        return std::ranges::find(texts, text) != texts.end();
    }
    /// Salvages the file. The result must be sound.
    Embedded::Salvage salvage() const
    {
        Expected<Embedded::Salvage> result = Embedded::salvageDrawing(file, out, lockWait(0));
        EXPECT_EQ(outcome(result), "0");
        const Expected<Embedded::DrawingFaults> remaining = Embedded::checkDrawing(out, lockWait(0));
        EXPECT_EQ(outcome(remaining), "0");
        EXPECT_EQ(remaining->count, 0U) << remaining->reported.front().place << ": "
                                        << remaining->reported.front().message;
        return std::move(result).value();
    }

    std::filesystem::path out = folder.path() / "out.qedb";
};

using Texts = std::vector<std::string>;

TEST_F(CheckedDrawing, SoundDrawing_HasNoFault)
{
    EXPECT_EQ(faults(), Texts());
}

TEST_F(CheckedDrawing, FlippedBit_IsFound)
{
    const std::string sound = readFile(file);
    std::string damaged = sound;
    std::size_t tried = 0;
    for (std::size_t bit = 0; bit < 8 * sound.size(); bit += std::size_t{499} * ORVEL_TEXT_STRIDE) {
        damaged[bit / 8] = static_cast<char>(damaged[bit / 8] ^ 1 << bit % 8);
        writeFile(file, damaged);
        ASSERT_NE(faults(), Texts()) << "bit " << bit;
        damaged[bit / 8] = sound[bit / 8];
        ++tried;
    }
    EXPECT_GT(tried, 20U);
}

TEST_F(CheckedDrawing, FileOfAWrongSize_IsFound)
{
    const std::string sound = readFile(file);
    for (const std::string& bytes :
         {sound + "x", sound + std::string(4096, '\0'), sound.substr(0, sound.size() - 4096), sound.substr(0, 5000)}) {
        writeFile(file, bytes);
        EXPECT_NE(faults(), Texts()) << bytes.size();
    }
}

TEST_F(CheckedDrawing, InconsistentRows_AreFound)
{
    const std::string sound = readFile(file);
    const std::pair<const char*, const char*> changes[] = {
        {"UPDATE objects SET owner = 99 WHERE handle = 6", "object 6: its owners do not lead to a root"},
        {"UPDATE objects SET owner = 7 WHERE handle = 7", "object 7: belongs to itself, through its owners"},
        {"UPDATE objects SET owner = NULL WHERE handle = 7", "object 7: its owners do not lead to a root"},
        {"UPDATE objects SET owner = 7 WHERE handle = 6", "object 6: is listed by another object than its owner"},
        {"UPDATE objects SET owner = 2 WHERE handle = 6", "object 6: cannot belong to object 2"},
        {"UPDATE objects SET class = 'QeDbEntity' WHERE handle = 6", "object 6: is of an unknown class, QeDbEntity"},
        {"DELETE FROM entries WHERE object = 6", "object 6: is not listed by any object"},
        {"DELETE FROM objects WHERE handle = 6", "object 6: is not there"},
        {"DELETE FROM fields WHERE object = 5", "object 5: its name is missing"},
        {"UPDATE fields SET value = x'FFFE41' WHERE field = 'coordinate system'",
         "object 8: coordinate system is not a text"},
        {"UPDATE resbufs SET code = 1071 WHERE position = 0",
         "object 6: holds a value that does not fit the group code 1071"},
        {"DELETE FROM resbufs WHERE position = 0", "object 6: a value is missing at position 0"},
        {"UPDATE extended_data SET application = 4",
         "object 1: extended data of 4, which is not a registered application"},
        {"UPDATE fields SET value = 'KTN_PROJECTION' WHERE object = 4", "object 4: is not the block of model space"},
        {"UPDATE header SET value = 7 WHERE field = 'next handle'",
         "header: the next handle is not above that of every object"},
        {"UPDATE header SET value = 77 WHERE field = 'drawing version'", "header: there is no drawing version 77"},
        {"DELETE FROM header WHERE field = 'geo data'", "object 8: is not listed by any object"},
        {"UPDATE header SET value = 1 WHERE field = 'geo data'",
         "object 1: is not a GeoData object, but the header names it as one"},
        {"UPDATE header SET value = 1 WHERE field = 'blocks'", "object 1: is a root of another class"},
        {"UPDATE header SET value = 3 WHERE field = 'named objects'", "object 3: is a root of another class"},
        {"UPDATE entries SET key = '' WHERE object = 6", "entries: a key is not a text"},
        {"UPDATE entries SET key = 7 WHERE object = 6", "entries: a key is not a text"},
    };
    for (const auto& [sql, fault] : changes) {
        writeFile(file, sound);
        const Texts found = faultsAfter(sql);
        EXPECT_TRUE(contains(found, fault)) << sql << "\n" << testing::PrintToString(found);
    }
}

TEST_F(CheckedDrawing, WrongDigest_IsFound)
{
    DrawingSql(file).run("DELETE FROM resbufs WHERE position = 2");
    sealFile(file);
    EXPECT_TRUE(contains(faults(), "object 6: has more or fewer values than were written"));
}

TEST_F(CheckedDrawing, FileThatIsNotADrawing_IsRefused)
{
    writeFile(file, "not a drawing");
    EXPECT_EQ(faults(), Texts{refusal(Qeapp::eFileDamaged, "not a drawing file: it is not an SQLite database")});
}

TEST_F(CheckedDrawing, SalvageOfASoundDrawing_GivesTheSameDrawing)
{
    const std::string before = fileContents();
    const Embedded::Salvage salvaged = salvage();
    EXPECT_EQ(salvaged.objects, 8U);
    EXPECT_TRUE(salvaged.lost.empty());
    EXPECT_EQ(contentsOfFile(out), before);
}

TEST_F(CheckedDrawing, Salvage_ReportsTheLostObjectAndKeepsTheRest)
{
    DrawingSql(file).run("UPDATE resbufs SET value = 2.25 WHERE object = 6 AND position = 1");
    const std::string before = readFile(file);
    const Embedded::Salvage salvaged = salvage();
    ASSERT_EQ(salvaged.lost.size(), 1U);
    EXPECT_EQ(salvaged.lost[0].handle, 6U);
    EXPECT_EQ(salvaged.lost[0].className, "QeDbXrecord");
    EXPECT_EQ(salvaged.lost[0].reason, "table resbufs: the row of 6 is not as it was written");
    EXPECT_EQ(countOccurrences(contentsOfFile(out), "\nobject "), 7);
    EXPECT_EQ(countOccurrences(contentsOfFile(out), "coordinate system \"geodata\""), 1);
    EXPECT_TRUE(readFile(file) == before);
}

TEST_F(CheckedDrawing, Salvage_KeepsAnObjectWithoutItsOwner)
{
    changeBySql(file,
                "UPDATE objects SET owner = 7 WHERE handle = 6; UPDATE entries SET dictionary = 7 WHERE object = 6");
    DrawingSql(file).run("UPDATE objects SET checksum = checksum + 1 WHERE handle = 7");
    const Embedded::Salvage salvaged = salvage();
    ASSERT_EQ(salvaged.lost.size(), 1U);
    EXPECT_EQ(salvaged.lost[0].handle, 7U);
    const std::string contents = contentsOfFile(out);
    EXPECT_EQ(countOccurrences(contents, "  entry \"SALVAGED\" "), 1) << contents;
    EXPECT_EQ(countOccurrences(contents, "  entry \"6\" 6\n"), 1) << contents;
    EXPECT_EQ(countOccurrences(contents, "  value 300 \"text\"\n"), 1) << contents;
}

TEST_F(CheckedDrawing, Salvage_BreaksACycleOfOwners)
{
    changeBySql(file,
                "UPDATE objects SET owner = 7 WHERE handle = 7; UPDATE entries SET dictionary = 7 WHERE object = 7");
    const Embedded::Salvage salvaged = salvage();
    EXPECT_TRUE(salvaged.lost.empty());
    EXPECT_EQ(countOccurrences(contentsOfFile(out), "  entry \"7\" 7\n"), 1);
}

TEST_F(CheckedDrawing, Salvage_KeepsAnObjectWithAKeyThatIsNotText)
{
    for (const char* const key : {"7", "''", "x'FFFE41'"}) {
        SCOPED_TRACE(key);
        changeBySql(file, std::string("UPDATE entries SET key = ") + key + " WHERE object = 6");
        std::filesystem::remove(out);
        const Embedded::Salvage salvaged = salvage();
        EXPECT_TRUE(salvaged.lost.empty());
        EXPECT_EQ(countOccurrences(contentsOfFile(out), "  entry \"6\" 6\n"), 1);
    }
}

TEST_F(CheckedDrawing, Salvage_LosesAnObjectWithExtendedDataOfHandleZero)
{
    changeBySql(file, "UPDATE extended_data SET application = 0");
    const Embedded::Salvage salvaged = salvage();
    ASSERT_EQ(salvaged.lost.size(), 1U);
    EXPECT_EQ(salvaged.lost[0].handle, 1U);
    EXPECT_EQ(salvaged.lost[0].reason, "expected a handle above 0");
}

TEST_F(CheckedDrawing, Salvage_CreatesLostRootsAnew)
{
    DrawingSql(file).run("UPDATE objects SET checksum = checksum + 1 WHERE handle < 5");
    const Embedded::Salvage salvaged = salvage();
    EXPECT_EQ(salvaged.lost.size(), 5U) << "four roots, and the extended data of one of them";
    const std::string contents = contentsOfFile(out);
    EXPECT_EQ(countOccurrences(contents, "  value 300 \"text\"\n"), 1) << contents;
}

/// Each page but the first in turn holds noise.
TEST_F(CheckedDrawing, Salvage_GivesASoundDrawingWhicheverPageIsDamaged)
{
    const std::string sound = readFile(file);
    for (std::size_t page = 1; page < sound.size() / 4096; ++page) {
        SCOPED_TRACE(page);
        std::string damaged = sound;
        for (std::size_t byte = 0; byte < 4096; ++byte)
            damaged[page * 4096 + byte] = static_cast<char>(byte * 7 + page);
        writeFile(file, damaged);
        std::filesystem::remove(out);
        static_cast<void>(salvage()); // it checks the salvaged file itself
    }
}

TEST_F(CheckedDrawing, Salvage_DoesNotOverwriteAFile)
{
    writeFile(out, "mine");
    EXPECT_EQ(Embedded::hostStatus(Embedded::salvageDrawing(file, out, lockWait(0))), Qeapp::eFileExists);
    EXPECT_EQ(readFile(out), "mine");
}

} // namespace
} // namespace Tests
