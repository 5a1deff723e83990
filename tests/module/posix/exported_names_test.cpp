// The shared library exports exactly the names in exported_names.txt. When the interface changes on purpose, change the
// file as the failing test says.
#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>

#include "module/published_names.h"

namespace Tests {
namespace {

struct CloseProgram {
    void operator()(std::FILE* program) const { pclose(program); }
};

/// Runs a program and returns its output.
std::string runProgram(const std::string& command)
{
    const std::unique_ptr<std::FILE, CloseProgram> program(popen(command.c_str(), "r"));
    if (!program)
        throw std::runtime_error("cannot run " + command);
    std::string output;
    std::array<char, 4096> buffer{};
    while (const std::size_t count = std::fread(buffer.data(), 1, buffer.size(), program.get()))
        output.append(buffer.data(), count);
    return output;
}

/// The dynamic symbols that the module defines, from lines "address type name". A constructor has two symbols of one
/// name.
Names exportedNames()
{
    std::istringstream lines(runProgram("'" ORVEL_NM_PROGRAM "' -D --defined-only -C '" ORVEL_MODULE_FILE "'"));
    Names names;
    for (std::string line; std::getline(lines, line);)
        names.insert(line.substr(line.find(' ') + 3));
    return names;
}

Names publishedNames()
{
    return readNames("exported_names.txt");
}

TEST(ExportedNames, AreAllPublished)
{
    ASSERT_FALSE(publishedNames().empty());
    EXPECT_EQ(missingNames(exportedNames(), publishedNames()), "");
}

TEST(ExportedNames, IncludeAllPublishedNames)
{
    ASSERT_FALSE(exportedNames().empty());
    EXPECT_EQ(missingNames(publishedNames(), exportedNames()), "");
}

} // namespace
} // namespace Tests
