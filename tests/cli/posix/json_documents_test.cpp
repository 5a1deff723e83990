#include "cli/command_line_test.h"
#include "cli/posix/shell_run.h"

namespace Tests {
namespace {

/// The check of what the tests had the program print with --json.
class JsonDocuments : public CommandLineTest {
protected:
    void givenRun(const Arguments& arguments, const std::string& output)
    {
        records_ += Json({{"test", "Suite.Test"}, {"arguments", arguments}, {"output", output}}).dump() + "\n";
    }
    /// Runs the check over the runs.
    ProgramResult check(const std::string& option = "") const
    {
        given("records", records_);
        return run(
            shellRun("exec " ORVEL_SOURCE_DIR "/tests/cli/check_json_documents.py " + option + " \"$0\" records"));
    }

private:
    std::string records_;
};

TEST_F(JsonDocuments, DocumentThatFitsItsSchema_IsAccepted)
{
    givenRun({"new", "a.qedb", "--json"}, R"({"file": "a.qedb", "drawingVersion": 33})");
    expectResult(check(), 0, "1 documents of 1 schemas, 0 problems\n", "");
}

TEST_F(JsonDocuments, DocumentThatDoesNotFit_IsRefused)
{
    const std::vector<std::pair<std::string, std::string>> wrong = {
        {R"({"file": "a.qedb"})", "$: 'drawingVersion' is a required property"},
        {R"({"file": "a.qedb", "drawingVersion": "33"})", "$.drawingVersion: '33' is not of type 'integer', 'null'"},
        {R"({"file": "a.qedb", "drawingVersion": 34})", "$.drawingVersion: 34 is greater than the maximum of 33"},
        {R"({"file": "", "drawingVersion": 33, "size": 1})", "('size' was unexpected)"},
        {R"({"file": "", "drawingVersion": null, "error": "x"})", "$.error: 'x' is not of type 'object'"},
        {R"([{"file": "", "drawingVersion": 33}, null])", "$[1]: None is not of type 'object'"},
        {R"({"file": "a.qedb", "drawingVersion": 33)", "not JSON"}};
    std::vector<testing::Matcher<const std::string&>> reasons;
    for (const auto& [document, reason] : wrong) {
        givenRun({"--json", "new", "a.qedb"}, document);
        reasons.push_back(testing::HasSubstr(reason));
    }
    givenRun({"--json", "clera"}, R"({"file": "a.qedb"})");
    reasons.push_back(testing::HasSubstr("not a document of error"));
    givenRun({"--json", "catalog", "search", "UTM"}, "null");
    reasons.push_back(testing::HasSubstr("not a document of catalog search"));
    reasons.push_back(testing::HasSubstr("9 documents of 3 schemas, 9 problems\n"));
    const ProgramResult result = check();
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.output, testing::AllOfArray(reasons));
    EXPECT_EQ(result.errors, "");
}

TEST_F(JsonDocuments, SchemaWithoutADocument_IsReportedWhereAllAreWanted)
{
    givenRun({"new", "a.qedb", "--json"}, R"({"file": "a.qedb", "drawingVersion": 33})");
    const ProgramResult result = check("--all");
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.output, testing::AllOf(testing::HasSubstr("no document of catalog search was checked\n"),
                                              testing::Not(testing::HasSubstr("no document of new "))));
}

} // namespace
} // namespace Tests
