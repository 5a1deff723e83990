#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "project/operating_system_conditions.h"
#include "project/source_tree.h"
#include "support/platform_test.h"

namespace Tests {
namespace {

using OperatingSystemConditionsTest = PlatformTest;

constexpr const char* kSdk = "examples/port/sdk/"; // below a platform, as an operating system is
constexpr const char* kExportHeader = "src/coordsys/orvel_export.h";

TEST_F(OperatingSystemConditionsTest, Project_HasConditionsOnlyInPlatformsAndTheExportHeader)
{
    std::vector<std::string> complaints;
    for (const SourceFile& file : readProjectSources()) {
        if (belongsToPlatform(file.path) || file.path.starts_with(kSdk) || file.path == kExportHeader)
            continue;
        for (const std::size_t line : findOperatingSystemConditions(file.text))
            complaints.push_back(formatComplaint(file.path, line, "a condition on the operating system"));
    }
    EXPECT_EQ(joinLines(complaints), "");
}

TEST_F(OperatingSystemConditionsTest, ConditionsOfThePlatform_AreFound)
{
    std::size_t conditions = 0;
    for (const SourceFile& file : readProjectSources())
        if (file.path == "platform/win32.h")
            conditions += findOperatingSystemConditions(file.text).size();
    EXPECT_GT(conditions, 0U);
}

TEST_F(OperatingSystemConditionsTest, EveryFormOfCondition_IsFound)
{
    for (const char* text :
         {"#ifdef _WIN32\n", "#ifndef __linux__\n", "#if defined(_WIN32)\n", "#if !defined(__unix__)\n",
          "  #  if FOO || defined(__APPLE__)\n", "#elif defined(_WIN64)\n", "#if __has_include(<unistd.h>)\n",
          "#if FOO || \\\n    defined(__MINGW32__)\n"})
        EXPECT_EQ(findOperatingSystemConditions(text), std::vector<std::size_t>{1}) << text;
}

TEST_F(OperatingSystemConditionsTest, OtherLines_AreNotFound)
{
    for (const char* text : {"#ifdef NDEBUG\n", "#if defined(WIN32_STANDIN_BUILD)\n", "#define _WIN32 1\n",
                             "#error no _WIN32 here\n", "// #ifdef _WIN32\n", "int linux = 1;\n", ""})
        EXPECT_TRUE(findOperatingSystemConditions(text).empty()) << text;
}

TEST_F(OperatingSystemConditionsTest, LineNumbers_CountFromOneAcrossContinuedLines)
{
    EXPECT_EQ(
        findOperatingSystemConditions("#define A \\\n  1\n#ifdef _WIN32\n#endif\n#if X || \\\n Y\n#ifdef __linux__\n"),
        (std::vector<std::size_t>{3, 7}));
}

} // namespace
} // namespace Tests
