#include "command_line_test.h"

namespace Tests {
namespace {

/// Files that are no drawing: each is refused with a message in one line, and stays as it is.
class BadDrawing : public CommandLineTest {
protected:
    void expectRefusal(int result, const std::string& message) const
    {
        const Json shown = runForJson({"show", "bad.qedb"}, 1);
        EXPECT_EQ(shown["result"], result);
        EXPECT_EQ(shown["drawingVersion"], nullptr);
        EXPECT_THAT(shown["error"].get<std::string>(), testing::HasSubstr(message));
        const ProgramResult assigned = run({"assign", "EPSG:4326", "bad.qedb"});
        EXPECT_EQ(assigned.status, 1);
        EXPECT_EQ(assigned.output, "");
        EXPECT_EQ(assigned.errors, "orvelcs: assign: bad.qedb: " + shown["error"].get<std::string>() + "\n");
        EXPECT_EQ(runForJson({"forms", "bad.qedb"}, 1)["result"], result);
    }

    /// An empty drawing, changed past all checks.
    void givenEdited(const std::string& sql) const
    {
        givenDrawing("bad.qedb");
        edit("bad.qedb", sql);
    }

    void expectRefusalOf(const std::string& bytes, int result, const std::string& message) const
    {
        given("bad.qedb", bytes);
        expectRefusal(result, message);
        EXPECT_EQ(contents("bad.qedb"), bytes);
    }
};

TEST_F(BadDrawing, Missing)
{
    expectRefusal(50, "No such file or directory");
    EXPECT_TRUE(files().empty());
}

TEST_F(BadDrawing, Folder)
{
    std::filesystem::create_directory(path("bad.qedb"));
    expectRefusal(51, "is a folder");
}

TEST_F(BadDrawing, Empty)
{
    expectRefusalOf("", 51, "is empty, not a drawing");
}

TEST_F(BadDrawing, NoDatabase)
{
    expectRefusalOf("a drawing\n", 51, "not a drawing file: it is not an SQLite database");
}

TEST_F(BadDrawing, FormerFormat)
{
    expectRefusalOf("{\n  \"format\": \"embedded host drawing\",\n  \"formatVersion\": 1,\n", 51,
                    "is a drawing of format 1, which is not read any more");
}

TEST_F(BadDrawing, Truncated)
{
    givenDrawing("bad.qedb");
    const std::string bytes = contents("bad.qedb");
    expectRefusalOf(bytes.substr(0, bytes.size() / 2), 51, "is damaged: database disk image is malformed");
}

TEST_F(BadDrawing, NewerFormat)
{
    givenEdited("PRAGMA user_version = 3");
    expectRefusal(52, "is of format 3; this version reads format 2");
}

TEST_F(BadDrawing, DatabaseOfAnotherApplication)
{
    givenEdited("PRAGMA application_id = 77");
    expectRefusal(51, "is a database of another application (its application_id is 77)");
}

TEST_F(BadDrawing, MissingTable)
{
    givenEdited("DROP TABLE resbufs");
    expectRefusal(51, "resbufs is missing from its schema");
}

TEST_F(BadDrawing, RowThatWasChangedByHand)
{
    givenEdited("UPDATE header SET value = 34 WHERE field = 'drawing version'");
    expectRefusal(51, "table header: the row of drawing version is not as it was written");
}

TEST_F(BadDrawing, MissingRoot)
{
    givenEdited("DELETE FROM objects WHERE handle = 2");
    expectRefusal(51, "object 2: is not there");
}

TEST_F(BadDrawing, OnStandardInput)
{
    expectResult(run({"show", "-"}, "a drawing\n"), 1, "", run({"show", "-"}, "a drawing\n").errors);
    EXPECT_THAT(run({"show", "-"}, "a drawing\n").errors, testing::StartsWith("orvelcs: show: -: eFileDamaged (51): "));
}

} // namespace
} // namespace Tests
