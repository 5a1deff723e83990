#include "command_line_test.h"

namespace Tests {
namespace {

/// A file that is not a valid drawing is refused with a message of one line and is not changed.
class InvalidDrawing : public CommandLineTest {
protected:
    void expectRefused(int result, const std::string& message) const
    {
        const Json shown = runForJson({"show", "invalid.qedb"}, 1);
        EXPECT_EQ(shown["result"], result);
        EXPECT_EQ(shown["drawingVersion"], nullptr);
        EXPECT_THAT(shown["error"]["message"].get<std::string>(), testing::HasSubstr(message));
        const ProgramResult assigned = run({"assign", "EPSG:4326", "invalid.qedb"});
        EXPECT_EQ(assigned.status, 1);
        EXPECT_EQ(assigned.output, "");
        EXPECT_EQ(assigned.errors,
                  "orvelcs: assign: invalid.qedb: " + shown["error"]["message"].get<std::string>() + "\n");
        EXPECT_EQ(runForJson({"forms", "invalid.qedb"}, 1)["result"], result);
    }

    /// Creates an empty drawing and changes it by SQL.
    void givenDrawingEditedBy(const std::string& sql) const
    {
        givenDrawing("invalid.qedb");
        edit("invalid.qedb", sql);
    }

    void expectBytesRefused(const std::string& bytes, int result, const std::string& message) const
    {
        given("invalid.qedb", bytes);
        expectRefused(result, message);
        EXPECT_EQ(contents("invalid.qedb"), bytes);
    }
};

TEST_F(InvalidDrawing, MissingFile_IsRefused)
{
    expectRefused(50, "No such file or directory");
    EXPECT_TRUE(files().empty());
}

TEST_F(InvalidDrawing, Folder_IsRefused)
{
    std::filesystem::create_directory(path("invalid.qedb"));
    expectRefused(51, "is a folder");
}

TEST_F(InvalidDrawing, EmptyFile_IsRefused)
{
    expectBytesRefused("", 51, "is empty, not a drawing");
}

TEST_F(InvalidDrawing, FileThatIsNotADatabase_IsRefused)
{
    expectBytesRefused("a drawing\n", 51, "not a drawing file: it is not an SQLite database");
}

TEST_F(InvalidDrawing, FormerFormat_IsRefused)
{
    expectBytesRefused("{\n  \"format\": \"embedded host drawing\",\n  \"formatVersion\": 1,\n", 51,
                       "is a drawing of format 1, which is not read any more");
}

TEST_F(InvalidDrawing, TruncatedFile_IsRefused)
{
    givenDrawing("invalid.qedb");
    const std::string bytes = contents("invalid.qedb");
    expectBytesRefused(bytes.substr(0, bytes.size() / 2), 51, "is damaged: database disk image is malformed");
}

TEST_F(InvalidDrawing, NewerFormat_IsRefused)
{
    givenDrawingEditedBy("PRAGMA user_version = 3");
    expectRefused(52, "is of format 3; this version reads format 2");
}

TEST_F(InvalidDrawing, DatabaseOfAnotherApplication_IsRefused)
{
    givenDrawingEditedBy("PRAGMA application_id = 77");
    expectRefused(51, "is a database of another application (its application_id is 77)");
}

TEST_F(InvalidDrawing, MissingTable_IsRefused)
{
    givenDrawingEditedBy("DROP TABLE resbufs");
    expectRefused(51, "resbufs is missing from its schema");
}

TEST_F(InvalidDrawing, ChangedRow_IsRefused)
{
    givenDrawingEditedBy("UPDATE header SET value = 34 WHERE field = 'drawing version'");
    expectRefused(51, "table header: the row of drawing version is not as it was written");
}

TEST_F(InvalidDrawing, MissingRootObject_IsRefused)
{
    givenDrawingEditedBy("DELETE FROM objects WHERE handle = 2");
    expectRefused(51, "object 2: is not there");
}

TEST_F(InvalidDrawing, StandardInput_IsRefused)
{
    expectResult(run({"show", "-"}, "a drawing\n"), 1, "",
                 testing::StartsWith("orvelcs: show: -: eFileDamaged (51): "));
}

} // namespace
} // namespace Tests
