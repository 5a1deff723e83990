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

    /// An empty drawing's text with one piece replaced.
    void givenEdited(const std::string& from, const std::string& to) const
    {
        givenDrawing("bad.qedb");
        std::string text = contents("bad.qedb");
        ASSERT_NE(text.find(from), std::string::npos) << text;
        text.replace(text.find(from), from.size(), to);
        given("bad.qedb", text);
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
    expectRefusalOf("", 51, "");
}

TEST_F(BadDrawing, NotJson)
{
    expectRefusalOf("a drawing\n", 51, "");
}

TEST_F(BadDrawing, Truncated)
{
    givenDrawing("bad.qedb");
    const std::string text = contents("bad.qedb");
    expectRefusalOf(text.substr(0, text.size() / 2), 51, "");
}

TEST_F(BadDrawing, NewerFormat)
{
    givenEdited("\"formatVersion\": 1", "\"formatVersion\": 2");
    expectRefusal(52, "formatVersion");
}

TEST_F(BadDrawing, DrawingVersionOutOfRange)
{
    givenEdited("\"drawingVersion\": 33", "\"drawingVersion\": 34");
    expectRefusal(51, "drawingVersion");
}

TEST_F(BadDrawing, DuplicateHandle)
{
    givenEdited("{\"handle\": \"2\"", "{\"handle\": \"1\"");
    expectRefusal(51, "objects[");
}

TEST_F(BadDrawing, DanglingReference)
{
    givenEdited("\"records\": [\"4\"]", "\"records\": [\"7F\"]");
    expectRefusal(51, "objects[");
}

TEST_F(BadDrawing, TooLarge)
{
    given("bad.qedb", "");
    std::filesystem::resize_file(path("bad.qedb"), (std::uintmax_t{1} << 30) + 1);
    expectRefusal(53, "larger than the 1073741824 bytes");
}

TEST_F(BadDrawing, NestedTooDeep)
{
    expectRefusalOf(std::string(10000, '[') + std::string(10000, ']') + "\n", 51, "");
}

TEST_F(BadDrawing, OnStandardInput)
{
    expectResult(run({"show", "-"}, "a drawing\n"), 1, "", run({"show", "-"}, "a drawing\n").errors);
    EXPECT_THAT(run({"show", "-"}, "a drawing\n").errors, testing::StartsWith("orvelcs: show: -: eFileDamaged (51): "));
}

} // namespace
} // namespace Tests
