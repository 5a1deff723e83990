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
    static const std::regex link(R"(.*\]\((?:\.\./)?(examples/[^)]+\.cpp)\).*)");
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

/// The examples that a page quotes, after a comparison with the files.
std::vector<std::string> compareQuotes(const std::string& page)
{
    std::vector<std::string> quoted;
    for (const Quote& quote : collectQuotes(readFile(ORVEL_SOURCE_DIR, page).text)) {
        EXPECT_EQ(quote.code, readFile(ORVEL_SOURCE_DIR, quote.example).text) << quote.example;
        quoted.push_back(quote.example);
    }
    std::ranges::sort(quoted);
    return quoted;
}

bool callsTheModule(const SourceFile& example)
{
    return example.text.find("#include \"coordsys/") != std::string::npos;
}

std::vector<SourceFile> readExamples()
{
    std::vector<SourceFile> examples = readFiles(ORVEL_SOURCE_DIR, {"examples"}, {".cpp"});
    std::erase_if(examples, [](const SourceFile& file) { return file.path.starts_with("examples/port/"); });
    return examples;
}

TEST_F(QuotedExamples, ClientsPage_QuotesEachExampleOfAClientWholeAndNothingElse)
{
    std::vector<std::string> examples;
    for (const SourceFile& file : readExamples())
        if (callsTheModule(file))
            examples.push_back(file.path);
    ASSERT_FALSE(examples.empty());
    EXPECT_EQ(compareQuotes("docs/clients.md"), examples);
}

TEST_F(QuotedExamples, Readme_QuotesTheFirstExample)
{
    EXPECT_EQ(compareQuotes("README.md"), std::vector<std::string>{"examples/assign.cpp"});
}

TEST_F(QuotedExamples, Example_BeginsWithWhatItShowsAndHowToRunIt_AndIsListed)
{
    const std::string list = readFile(ORVEL_SOURCE_DIR, "examples/README.md").text;
    for (const SourceFile& file : readExamples()) {
        const std::string name = file.path.substr(file.path.find('/') + 1);
        const std::string program = "build/release/bin/example_" + name.substr(0, name.find('.'));
        const std::size_t includes = file.text.find("#include");
        EXPECT_LT(file.text.find(program), includes) << file.path << " does not begin with how to run " << program;
        EXPECT_TRUE(file.text.starts_with("// ")) << file.path;
        EXPECT_NE(list.find("](" + name + ")"), std::string::npos) << file.path << " is not on the list";
    }
}

TEST_F(QuotedExamples, Block_BelongsToTheLinkAboveIt)
{
    const std::string page = "[a](../examples/a.cpp):\n\n```cpp\nint a;\n\n```\n```cpp\nint b;\n```\n```\ntext\n```\n";
    EXPECT_EQ(collectQuotes(page), (std::vector<Quote>{{"examples/a.cpp", "int a;\n\n"}, {"", "int b;\n"}}));
}

} // namespace
} // namespace Tests
