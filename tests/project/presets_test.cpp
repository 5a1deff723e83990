#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <set>
#include <string>

#include "support/platform_test.h"

namespace Tests {
namespace {

using Json = nlohmann::json;
using PresetNames = std::set<std::string>;

/// The presets that the Makefile uses.
const PresetNames kNeeded{"dev", "release", "asan", "coverage"};

/// The names in a list of presets, without hidden presets.
PresetNames visibleNames(const Json& presets)
{
    PresetNames names;
    for (const Json& preset : presets)
        if (!preset.value("hidden", false))
            names.insert(preset.at("name"));
    return names;
}

PresetNames missingFrom(const Json& presets)
{
    PresetNames missing = kNeeded;
    for (const std::string& name : visibleNames(presets))
        missing.erase(name);
    return missing;
}

Json presetNamed(const Json& presets, const std::string& name)
{
    for (const Json& preset : presets)
        if (preset.at("name") == name)
            return preset;
    return nullptr;
}

class PresetsTest : public PlatformTest {
protected:
    static Json projectPresets()
    {
        std::ifstream file(std::filesystem::path(ORVEL_SOURCE_DIR) / "CMakePresets.json");
        return Json::parse(file);
    }
};

TEST_F(PresetsTest, ConfigurePresets_HaveThoseThatTheMakefileNeeds)
{
    EXPECT_EQ(missingFrom(projectPresets().at("configurePresets")), PresetNames{});
}

TEST_F(PresetsTest, BuildPresets_HaveThoseThatTheMakefileNeeds)
{
    EXPECT_EQ(missingFrom(projectPresets().at("buildPresets")), PresetNames{});
}

TEST_F(PresetsTest, TestPresets_HaveThoseThatTheMakefileNeeds)
{
    EXPECT_EQ(missingFrom(projectPresets().at("testPresets")), PresetNames{});
}

TEST_F(PresetsTest, SanitizerPreset_TurnsTheSanitizersOnWithClang)
{
    const Json variables = presetNamed(projectPresets().at("configurePresets"), "asan").at("cacheVariables");
    EXPECT_EQ(variables.at("ORVEL_SANITIZE"), "ON");
    EXPECT_EQ(variables.at("CMAKE_CXX_COMPILER"), "clang++");
}

TEST_F(PresetsTest, FuzzPreset_HasTheSanitizersAndLibFuzzersCounters)
{
    const Json fuzz = presetNamed(projectPresets().at("configurePresets"), "fuzz");
    ASSERT_FALSE(fuzz.is_null());
    EXPECT_EQ(fuzz.at("inherits"), "asan");
    EXPECT_EQ(fuzz.at("cacheVariables").at("ORVEL_FUZZ"), "ON");
}

TEST_F(PresetsTest, CoveragePreset_HasTheCountersAndNothingOptimisedAway)
{
    const Json variables = presetNamed(projectPresets().at("configurePresets"), "coverage").at("cacheVariables");
    EXPECT_EQ(variables.at("ORVEL_COVERAGE"), "ON");
    EXPECT_EQ(variables.at("CMAKE_CXX_FLAGS_DEBUG"), "-O0");
}

TEST_F(PresetsTest, ReleasePreset_IsOptimised)
{
    const Json variables = presetNamed(projectPresets().at("configurePresets"), "release").at("cacheVariables");
    EXPECT_EQ(variables.at("CMAKE_BUILD_TYPE"), "Release");
}

TEST_F(PresetsTest, PresetForClangTidy_HasACompileCommandForEachSource)
{
    const Json tidy = presetNamed(projectPresets().at("configurePresets"), "tidy");
    ASSERT_FALSE(tidy.is_null());
    EXPECT_EQ(tidy.at("inherits"), "asan");
    EXPECT_EQ(tidy.at("cacheVariables").at("CMAKE_UNITY_BUILD"), "OFF");
}

TEST_F(PresetsTest, RunWithoutAnyTest_IsAnError)
{
    const Json base = presetNamed(projectPresets().at("testPresets"), "base");
    EXPECT_EQ(base.at("execution").at("noTestsAction"), "error");
}

TEST_F(PresetsTest, HiddenPresets_CountAsMissing)
{
    const Json presets = Json::parse(
        R"([{"name": "dev", "hidden": true}, {"name": "release"}, {"name": "asan"}, {"name": "coverage"}])");
    EXPECT_EQ(missingFrom(presets), PresetNames{"dev"});
}

} // namespace
} // namespace Tests
