#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <string>

#include "platform/host.h"

namespace {

/// Reads the numbers of the results from the rows "| number | `eName` |" of the page.
std::map<std::string, std::set<int>> readResultsPage()
{
    std::ifstream page(ORVEL_SOURCE_DIR "/docs/results.md");
    const std::regex row(R"(^\| (\d+) \| `(e\w+)` \|.*)");
    std::map<std::string, std::set<int>> numbers;
    for (std::string line; std::getline(page, line);) {
        std::smatch match;
        if (std::regex_match(line, match, row))
            numbers[match[2]].insert(std::stoi(match[1]));
    }
    return numbers;
}

TEST(ResultsPage, ListsTheHostsResultNumbers)
{
    const std::map<std::string, std::set<int>> expected{
        {"eOk", {Qeapp::eOk}},
        {"eNotApplicable", {Qeapp::eNotApplicable}},
        {"eInvalidInput", {Qeapp::eInvalidInput}},
        {"eOutOfMemory", {Qeapp::eOutOfMemory}},
        {"eInvalidResbuf", {Qeapp::eInvalidResbuf}},
        {"eNoTransaction", {Qeapp::eNoTransaction}},
        {"eNoObject", {Qeapp::eNoObject}},
        {"eNullObjectId", {Qeapp::eNullObjectId}},
        {"eKeyNotFound", {Qeapp::eKeyNotFound}},
        {"eInvalidDrawingVersion", {Qeapp::eInvalidDrawingVersion}},
        {"eNoDatabase", {Qeapp::eNoDatabase}},
        {"eVetoed", {Qeapp::eVetoed}},
    };
    EXPECT_EQ(readResultsPage(), expected);
}

} // namespace
