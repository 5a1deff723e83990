// Compares the port for vcpkg with the project, since vcpkg itself is not run here.
#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include "project/source_tree.h"
#include "support/platform_test.h"

namespace Tests {
namespace {

using Json = nlohmann::json;
using Names = std::set<std::string>;

const std::string kPort = "packaging/vcpkg/ports/orvel-coordsys-core/";

std::string textOf(const std::string& path)
{
    return readFile(ORVEL_SOURCE_DIR, path).text;
}

bool exists(const std::string& path)
{
    return std::filesystem::exists(std::filesystem::path(ORVEL_SOURCE_DIR) / path);
}

/// What the expression's first group matches in the text.
Names findAll(const std::string& text, const std::string& expression)
{
    const std::regex regex(expression);
    Names found;
    for (std::sregex_iterator match(text.begin(), text.end(), regex), end; match != end; ++match)
        found.insert((*match)[1]);
    return found;
}

/// The libraries that the manifest asks for, without tools of vcpkg's own.
Names libraries(const Json& manifest)
{
    Names names;
    for (const Json& dependency : manifest.at("dependencies")) {
        if (dependency.is_string())
            names.insert(dependency);
        else if (!dependency.value("host", false))
            names.insert(dependency.at("name"));
    }
    return names;
}

class VcpkgPort : public PlatformTest {
protected:
    const Json manifest = Json::parse(textOf(kPort + "vcpkg.json"));
    const Json projectManifest = Json::parse(textOf("vcpkg.json"));
    const std::string portfile = textOf(kPort + "portfile.cmake");
};

TEST_F(VcpkgPort, HasTheNameAndTheVersionOfTheProject)
{
    EXPECT_EQ(manifest.at("name"), projectManifest.at("name"));
    EXPECT_EQ(manifest.at("version"), projectManifest.at("version"));
    EXPECT_EQ(findAll(textOf("CMakeLists.txt"), R"(project\(OrvelCoordsysCore VERSION ([0-9.]+))"),
              Names{manifest.at("version")});
}

TEST_F(VcpkgPort, AsksForTheLibrariesOfTheProjectWithoutThoseOfItsTests)
{
    Names expected = libraries(projectManifest);
    ASSERT_EQ(expected.erase("gtest"), 1U);
    EXPECT_EQ(libraries(manifest), expected);
}

TEST_F(VcpkgPort, PassesOptionsThatTheProjectHas)
{
    std::string definitions = textOf("CMakeLists.txt");
    for (const SourceFile& file : readFiles(ORVEL_SOURCE_DIR, {"cmake"}, {".cmake"}))
        definitions += file.text;
    Names known = findAll(definitions, R"(\bset\((\w+) [^\n]* CACHE )");
    ASSERT_TRUE(definitions.find("include(CTest)") != std::string::npos);
    known.insert("BUILD_TESTING");
    const Names passed = findAll(portfile, R"(-D(\w+)=)");
    ASSERT_FALSE(passed.empty());
    for (const std::string& option : passed)
        EXPECT_TRUE(known.contains(option)) << option;
}

TEST_F(VcpkgPort, NamesFilesThatExist)
{
    const Names upwards = findAll(portfile, R"re(\$\{CURRENT_PORT_DIR\}/([^"]+)")re");
    ASSERT_EQ(upwards.size(), 1U);
    EXPECT_TRUE(exists(kPort + *upwards.begin() + "/CMakeLists.txt"));
    const Names files = findAll(portfile, R"re(\$\{SOURCE_PATH\}/([^"]+)")re");
    ASSERT_FALSE(files.empty());
    for (const std::string& file : files)
        EXPECT_TRUE(exists(file)) << file;
}

TEST_F(VcpkgPort, IsMarkedAsNotTried)
{
    EXPECT_TRUE(textOf("packaging/vcpkg/README.md").find("**Not tried here**") != std::string::npos);
    EXPECT_TRUE(textOf("docs/packages.md").find("**It has not been tried") != std::string::npos);
}

} // namespace
} // namespace Tests
