#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <string>

#include "platform/host.h"

namespace {

/// The numbers that the page gives to the names of results, from the tables' rows "| number | `eName` |".
std::map<std::string, std::set<int>> numbersOnThePage()
{
    std::ifstream page(ORVEL_SOURCE_DIR "/docs/results.md");
    const std::regex row(R"(^\| (\d+) \| `(e\w+)` \|.*)");
    std::map<std::string, std::set<int>> numbers;
    for (std::string line; std::getline(page, line);) {
        std::smatch found;
        if (std::regex_match(line, found, row))
            numbers[found[2]].insert(std::stoi(found[1]));
    }
    return numbers;
}

TEST(ResultsPage, GivesTheHostsNumbers)
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
    EXPECT_EQ(numbersOnThePage(), expected);
}

} // namespace
