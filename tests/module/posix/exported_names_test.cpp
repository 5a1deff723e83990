// The shared library exports its interface: exactly the names in exported_names.txt. Whoever changes the interface on
// purpose changes the file as the failing test prints it.
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

/// The lines that the program prints.
std::string outputOf(const std::string& command)
{
    const std::unique_ptr<std::FILE, CloseProgram> program(popen(command.c_str(), "r"));
    if (!program)
        throw std::runtime_error("cannot be run: " + command);
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
    std::istringstream lines(outputOf("'" ORVEL_NM_PROGRAM "' -D --defined-only -C '" ORVEL_MODULE_FILE "'"));
    Names names;
    for (std::string line; std::getline(lines, line);)
        names.insert(line.substr(line.find(' ') + 3));
    return names;
}

Names publishedNames()
{
    return namesInFile("exported_names.txt");
}

TEST(ExportedNames, AreAllPublished)
{
    ASSERT_FALSE(publishedNames().empty());
    EXPECT_EQ(difference(exportedNames(), publishedNames()), "");
}

TEST(ExportedNames, LackNothingThatIsPublished)
{
    ASSERT_FALSE(exportedNames().empty());
    EXPECT_EQ(difference(publishedNames(), exportedNames()), "");
}

} // namespace
} // namespace Tests
