// The promises that port_check prints are those of docs/porting.md.
#include <gtest/gtest.h>

#include <map>
#include <regex>
#include <set>
#include <string>
#include <utility>

#include "project/source_tree.h"
#include "support/platform_test.h"

namespace Tests {
namespace {

using PortCheckPromises = PlatformTest;

using Promise = std::pair<std::string, std::string>; // the identifier and the sentence

/// The rows "| H1 | sentence |" of the page.
std::set<Promise> readPage(const std::string& page)
{
    static const std::regex row(R"(^\| ([HSFW][0-9]+) \| (.+) \|$)");
    std::set<Promise> promises;
    for (const std::string& line : splitLines(page)) {
        std::smatch match;
        if (std::regex_match(line, match, row))
            promises.emplace(match[1], match[2]);
    }
    return promises;
}

/// Joins neighbouring literals.
std::string joinLiterals(const std::string& literals)
{
    const std::string joined = std::regex_replace(literals, std::regex(R"("\s+")"), "");
    return std::regex_replace(joined.substr(1, joined.size() - 2), std::regex(R"(\\(.))"), "$1");
}

/// The rows {"subject", "H1", "sentence", function} of the program's tables.
std::set<Promise> readProgram(const std::string& source)
{
    static const std::regex row(R"re(\{"[^"]+",\s+"([HSFW][0-9]+)",\s+((?:"(?:[^"\\]|\\.)*"\s*)+),\s+\w+\})re");
    std::set<Promise> promises;
    for (std::sregex_iterator match(source.begin(), source.end(), row); match != std::sregex_iterator(); ++match)
        promises.emplace((*match)[1], joinLiterals(std::regex_replace((*match)[2].str(), std::regex(R"(\s+$)"), "")));
    return promises;
}

/// A line for each promise that the others lack.
std::string listAbsentPromises(const std::set<Promise>& promises, const std::set<Promise>& others)
{
    std::string complaints;
    for (const Promise& promise : promises)
        if (!others.contains(promise))
            complaints += promise.first + ": " + promise.second + '\n';
    return complaints;
}

TEST_F(PortCheckPromises, TablesOfPortCheck_HaveThePromisesOfThePage)
{
    const std::set<Promise> page = readPage(readFile(ORVEL_SOURCE_DIR, "docs/porting.md").text);
    const std::set<Promise> program = readProgram(readFile(ORVEL_SOURCE_DIR, "examples/port/port_check.cpp").text);
    EXPECT_FALSE(page.empty());
    EXPECT_EQ(listAbsentPromises(page, program), "") << "no check of port_check prints these promises of the page";
    EXPECT_EQ(listAbsentPromises(program, page), "") << "these promises of port_check are not on the page";
}

TEST_F(PortCheckPromises, RowOfThePage_IsIdentifierAndSentence)
{
    EXPECT_EQ(readPage("| promise | of the host |\n|---|---|\n| H1 | `a` gives \"b\". |\n"),
              std::set<Promise>({{"H1", "`a` gives \"b\"."}}));
}

TEST_F(PortCheckPromises, RowOfTheProgram_JoinsItsLiterals)
{
    EXPECT_EQ(readProgram("    {\"opening\", \"H1\",\n     \"`a` gives \"\n     \"\\\"b\\\".\",\n     checkA},\n"),
              std::set<Promise>({{"H1", "`a` gives \"b\"."}}));
}

} // namespace
} // namespace Tests
