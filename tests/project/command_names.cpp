#include "project/command_names.h"

#include <filesystem>
#include <regex>
#include <set>

#include "project/source_tree.h"

namespace Tests {
namespace {

using FoundNames = std::set<std::string>;

/// The first group of each match.
FoundNames collectNames(const std::string& text, const char* pattern)
{
    const std::regex expression(pattern);
    FoundNames names;
    for (std::sregex_iterator match(text.begin(), text.end(), expression), end; match != end; ++match)
        names.insert((*match)[1]);
    return names;
}

FoundNames readTargets()
{
    const std::string makefile = readFile(ORVEL_SOURCE_DIR, "Makefile").text;
    FoundNames targets = collectNames(makefile, R"((?:^|\n)([a-z-]+):)");
    const FoundNames checks{"check-dev", "check-release", "check-asan", "check-coverage", "check-windows"};
    targets.insert(checks.begin(), checks.end()); // made of a pattern
    return targets;
}

FoundNames readPresets()
{
    return collectNames(readFile(ORVEL_SOURCE_DIR, "CMakePresets.json").text, R"re("name": "([a-z-]+)")re");
}

} // namespace

std::vector<std::string> findUnknownNames(const std::string& commands)
{
    static const FoundNames targets = readTargets();
    static const FoundNames presets = readPresets();
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
