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
const PresetNames kRequiredPresets{"dev", "release", "asan", "coverage"};

/// The names of the presets that are not hidden.
PresetNames getVisibleNames(const Json& presets)
{
    PresetNames names;
    for (const Json& preset : presets)
        if (!preset.value("hidden", false))
            names.insert(preset.at("name"));
    return names;
}

PresetNames findMissing(const Json& presets)
{
    PresetNames missing = kRequiredPresets;
    for (const std::string& name : getVisibleNames(presets))
        missing.erase(name);
    return missing;
}

Json findPreset(const Json& presets, const std::string& name)
{
    for (const Json& preset : presets)
        if (preset.at("name") == name)
            return preset;
    return nullptr;
}

class PresetsTest : public PlatformTest {
protected:
    static Json readProjectPresets()
    {
        std::ifstream file(std::filesystem::path(ORVEL_SOURCE_DIR) / "CMakePresets.json");
        return Json::parse(file);
    }
};

TEST_F(PresetsTest, EachKindOfPreset_HasThoseThatTheMakefileNeeds)
{
    for (const char* kind : {"configurePresets", "buildPresets", "testPresets"})
        EXPECT_EQ(findMissing(readProjectPresets().at(kind)), PresetNames{}) << kind;
}

TEST_F(PresetsTest, SanitizerPreset_EnablesTheSanitizersOfClang)
{
    const Json variables = findPreset(readProjectPresets().at("configurePresets"), "asan").at("cacheVariables");
    EXPECT_EQ(variables.at("ORVEL_SANITIZE"), "ON");
    EXPECT_EQ(variables.at("CMAKE_CXX_COMPILER"), "clang++");
}

TEST_F(PresetsTest, FuzzPreset_EnablesTheSanitizersAndLibFuzzer)
{
    const Json fuzz = findPreset(readProjectPresets().at("configurePresets"), "fuzz");
    ASSERT_FALSE(fuzz.is_null());
    EXPECT_EQ(fuzz.at("inherits"), "asan");
    EXPECT_EQ(fuzz.at("cacheVariables").at("ORVEL_FUZZ"), "ON");
}

TEST_F(PresetsTest, CoveragePreset_EnablesTheCountersWithoutOptimisation)
{
    const Json variables = findPreset(readProjectPresets().at("configurePresets"), "coverage").at("cacheVariables");
    EXPECT_EQ(variables.at("ORVEL_COVERAGE"), "ON");
    EXPECT_EQ(variables.at("CMAKE_CXX_FLAGS_DEBUG"), "-O0");
}

TEST_F(PresetsTest, ReleasePreset_IsOptimised)
{
    const Json variables = findPreset(readProjectPresets().at("configurePresets"), "release").at("cacheVariables");
    EXPECT_EQ(variables.at("CMAKE_BUILD_TYPE"), "Release");
}

TEST_F(PresetsTest, TidyPreset_CompilesEachSourceByItself)
{
    const Json tidy = findPreset(readProjectPresets().at("configurePresets"), "tidy");
    ASSERT_FALSE(tidy.is_null());
    EXPECT_EQ(tidy.at("inherits"), "asan");
    EXPECT_EQ(tidy.at("cacheVariables").at("CMAKE_UNITY_BUILD"), "OFF");
}

TEST_F(PresetsTest, TestPresets_FailWithoutAnyTest)
{
    const Json base = findPreset(readProjectPresets().at("testPresets"), "base");
    EXPECT_EQ(base.at("execution").at("noTestsAction"), "error");
}

TEST_F(PresetsTest, HiddenPresets_CountAsMissing)
{
    const Json presets = Json::parse(
        R"([{"name": "dev", "hidden": true}, {"name": "release"}, {"name": "asan"}, {"name": "coverage"}])");
    EXPECT_EQ(findMissing(presets), PresetNames{"dev"});
}

} // namespace
} // namespace Tests
