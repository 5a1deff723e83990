// The schema, the queries and the numbers of docs/formats/drawing-file.md agree with the files of the host.
#include <vector>

#include "host/drawing_file/drawing_file_test.h"
#include "host/drawing_file/golden_drawing.h"

namespace Tests {
namespace {

class FormatPage : public DrawingFileTest {
protected:
    /// The fenced code blocks of the page in that language.
    static std::vector<std::string> blocks(const std::string& language)
    {
        static const std::string page =
            readFile(std::filesystem::path(ORVEL_SOURCE_DIR) / "docs" / "formats" / "drawing-file.md");
        const std::string opening = "\n```" + language + "\n";
        std::vector<std::string> blocks;
        for (std::size_t at = page.find(opening); at != std::string::npos; at = page.find(opening, at)) {
            at += opening.size();
            blocks.push_back(page.substr(at, page.find("```\n", at) - at));
        }
        return blocks;
    }
    /// The rows of the result as SQLite's shell shows them.
    std::string runQuery(const std::string& query) const
    {
        const SQLite::Database database(file.string(), SQLite::OPEN_READONLY);
        SQLite::Statement statement(database, query);
        std::string text;
        while (statement.executeStep()) {
            for (int column = 0; column < statement.getColumnCount(); ++column)
                text += (column > 0 ? "|" : "") + statement.getColumn(column).getString();
            text += "\n";
        }
        return text;
    }
};

TEST_F(FormatPage, Page_HasTheSchemaOfTheFile)
{
    const std::string query = "SELECT type, name, tbl_name, sql FROM sqlite_schema ORDER BY name";
    writeDrawing(GivenDrawing());
    const std::string written = runQuery(query);
    std::filesystem::remove(file);
    DrawingSql(file).run(blocks("sql").at(0));
    EXPECT_EQ(runQuery(query), written);
}

TEST_F(FormatPage, QueriesOfThePage_GiveTheirAnswers)
{
    createFromSql(file, goldenSql("version_29"));
    const std::vector<std::string> queries = blocks("sql");
    const std::vector<std::string> answers = blocks("text");
    ASSERT_EQ(queries.size(), 5U);
    ASSERT_EQ(answers.size(), queries.size() - 1);
    for (std::size_t number = 1; number < queries.size(); ++number)
        EXPECT_EQ(runQuery(queries[number]), answers[number - 1]) << queries[number];
}

TEST_F(FormatPage, NumbersOfThePage_AreThoseOfTheFile)
{
    writeDrawing(GivenDrawing());
    DrawingSql sql(file);
    EXPECT_EQ(sql.integer("PRAGMA application_id"), 1329808471);
    EXPECT_EQ(sql.integer("PRAGMA user_version"), 2);
    EXPECT_EQ(sql.integer("PRAGMA page_size"), 4096);
    EXPECT_EQ(sql.text("PRAGMA encoding"), "UTF-8");
    EXPECT_EQ(sql.text("PRAGMA journal_mode"), "delete");
    EXPECT_EQ(readFile(file).at(20), 8);
}

TEST_F(FormatPage, EveryPageOfAFile_IsSealed)
{
    const auto expectSealed = [this](const char* how) {
        const std::string before = readFile(file);
        sealFile(file);
        EXPECT_TRUE(readFile(file) == before) << how;
    };
    writeDrawing(drawingOfEverything());
    expectSealed("in memory");
    std::filesystem::remove(file);
    EXPECT_EQ(outcome(save(*drawingOfEverything().database())), "0");
    expectSealed("a new file");
    const auto other = folder.path() / "b.qedb";
    {
        Drawing drawing(loadFile(DrawingAccess::changing));
        drawing.withXrecord({{300, std::wstring(100'000, L'x')}}, L"long");
        EXPECT_EQ(outcome(save(*drawing.database())), "0");
        EXPECT_EQ(outcome(Embedded::saveDrawing(*drawing.database(), other, QeDb::kCurrentDwg)), "0");
    }
    expectSealed("a changed file");
    std::filesystem::rename(other, file);
    expectSealed("a copy");
    EXPECT_EQ(outcome(Embedded::saveDrawing(*drawingOfEverything().database(), file, QeDb::kCurrentDwg,
                                            Embedded::Overwriting::drawings)),
              "0");
    expectSealed("an overwritten file");
}

} // namespace
} // namespace Tests
