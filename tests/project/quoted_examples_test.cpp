// A page quotes whole files of examples/: a link to the file, and the file's text as the next block of code.
#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <regex>
#include <string>
#include <vector>

#include "project/source_tree.h"
#include "support/platform_test.h"

namespace Tests {
namespace {

using QuotedExamples = PlatformTest;

/// A block of C++ code, and the example that the nearest link above it leads to. No example when there is none since
/// the block before.
struct Quote {
    std::string example;
    std::string code;
    friend bool operator==(const Quote&, const Quote&) = default;
};

std::vector<Quote> collectQuotes(const std::string& page)
{
    static const std::regex link(R"(.*\]\(\.\./(examples/[^)]+\.cpp)\).*)");
    std::vector<Quote> quotes;
    std::optional<Quote> open;
    std::string example;
    for (const std::string& line : splitLines(page)) {
        std::smatch match;
        if (open && line == "```") {
            quotes.push_back(*open);
            open.reset();
            example.clear();
        } else if (open) {
            open->code += line + "\n";
        } else if (line == "```cpp") {
            open = Quote{example, ""};
        } else if (std::regex_match(line, match, link)) {
            example = match[1];
        }
    }
    return quotes;
}

TEST_F(QuotedExamples, ClientsPage_QuotesEachExampleOfAClientWholeAndNothingElse)
{
    std::vector<std::string> examples;
    for (const SourceFile& file : readFiles(ORVEL_SOURCE_DIR, {"examples/client"}, {".cpp"}))
        examples.push_back(file.path);
    ASSERT_FALSE(examples.empty());
    std::vector<std::string> quoted;
    for (const Quote& quote : collectQuotes(readFile(ORVEL_SOURCE_DIR, "docs/clients.md").text)) {
        EXPECT_EQ(quote.code, readFile(ORVEL_SOURCE_DIR, quote.example).text) << quote.example;
        quoted.push_back(quote.example);
    }
    std::ranges::sort(quoted);
    EXPECT_EQ(quoted, examples);
}

TEST_F(QuotedExamples, Block_BelongsToTheLinkAboveIt)
{
    const std::string page = "[a](../examples/a.cpp):\n\n```cpp\nint a;\n\n```\n```cpp\nint b;\n```\n```\ntext\n```\n";
    EXPECT_EQ(collectQuotes(page), (std::vector<Quote>{{"examples/a.cpp", "int a;\n\n"}, {"", "int b;\n"}}));
}

} // namespace
} // namespace Tests
