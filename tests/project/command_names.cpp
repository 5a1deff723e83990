#include "project/command_names.h"

#include <filesystem>
#include <regex>
#include <set>

#include "project/source_tree.h"

namespace Tests {
namespace {

using Names = std::set<std::string>;

/// The first group of each match.
Names collectNames(const std::string& text, const char* pattern)
{
    const std::regex expression(pattern);
    Names names;
    for (std::sregex_iterator match(text.begin(), text.end(), expression), end; match != end; ++match)
        names.insert((*match)[1]);
    return names;
}

Names readTargets()
{
    const std::string makefile = readFile(ORVEL_SOURCE_DIR, "Makefile").text;
    Names targets = collectNames(makefile, R"((?:^|\n)([a-z-]+):)");
    const Names checks{"check-dev", "check-release", "check-asan", "check-coverage", "check-windows"};
    targets.insert(checks.begin(), checks.end()); // made of a pattern
    return targets;
}

Names readPresets()
{
    return collectNames(readFile(ORVEL_SOURCE_DIR, "CMakePresets.json").text, R"re("name": "([a-z-]+)")re");
}

} // namespace

std::vector<std::string> findUnknownNames(const std::string& commands)
{
    static const Names targets = readTargets();
    static const Names presets = readPresets();
    std::vector<std::string> unknown;
    for (const std::string& name : collectNames(commands, R"((?:^|[\n;&|] *)make +([a-z-]+))"))
        if (!targets.contains(name))
            unknown.push_back("make target " + name);
    for (const std::string& name : collectNames(commands, R"(--preset[ =]([a-z-]+))"))
        if (!presets.contains(name))
            unknown.push_back("preset " + name);
    for (const std::string& path : collectNames(commands, R"((?:^|[\s(])(\.?\.?/?(?:\.ci|scripts)/[\w./-]+))"))
        if (!std::filesystem::exists(std::filesystem::path(ORVEL_SOURCE_DIR) / path))
            unknown.push_back("script " + path);
    return unknown;
}

} // namespace Tests
