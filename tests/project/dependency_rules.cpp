#include "project/dependency_rules.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <optional>
#include <regex>
#include <set>
#include <string_view>

namespace Tests {
namespace {

using namespace std::string_view_literals;

using Paths = std::set<std::string>;
using Objection = std::optional<std::string>;

constexpr std::array kSeam{"platform/foundation.h"sv, "platform/host.h"sv, "platform/spatial_reference.h"sv,
                           "platform/windows.h"sv};

// An arrow that no file below `from` may draw to one below `to`.
struct ForbiddenArrow {
    std::string_view from;
    std::string_view to;
};
constexpr std::array kForbidden{
    ForbiddenArrow{"src/storage/", "src/coordsys/"},
    ForbiddenArrow{"src/storage/", "src/frame/"},
    ForbiddenArrow{"src/storage/", "src/transformation/"},
    ForbiddenArrow{"src/coordsys/", "src/frame/"},
    ForbiddenArrow{"src/coordsys/", "src/transformation/"},
    ForbiddenArrow{"src/transformation/", "src/frame/"},
    ForbiddenArrow{"embedded/foundation/", "embedded/host/"},
    ForbiddenArrow{"embedded/foundation/", "embedded/spatial_reference/"},
    ForbiddenArrow{"embedded/foundation/", "embedded/windows/"},
    ForbiddenArrow{"embedded/host/", "embedded/spatial_reference/"},
    ForbiddenArrow{"embedded/spatial_reference/", "embedded/host/"},
};

bool isStandardHeader(const std::string& name)
{
    // The C++ headers have no extension and no folder; no system or library header in use here looks so.
    return std::ranges::all_of(name,
                               [](char c) { return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_'; });
}

/// The file of the repository that the directive leads to; empty when it leads out of it.
std::string resolved(const std::string& includer, const IncludeDirective& include, const Paths& paths)
{
    const auto folder = std::filesystem::path(includer).parent_path();
    std::vector<std::filesystem::path> candidates{include.target};
    if (!include.angled)
        candidates.push_back(folder / include.target);
    candidates.push_back(std::filesystem::path("src") / include.target);
    for (const auto& candidate : candidates) {
        std::string path = candidate.lexically_normal().generic_string();
        if (paths.contains(path))
            return path;
    }
    return {};
}

Objection objectionToForbiddenArrow(const std::string& from, const std::string& to)
{
    const auto arrow = std::ranges::find_if(
        kForbidden, [&](const ForbiddenArrow& one) { return from.starts_with(one.from) && to.starts_with(one.to); });
    if (arrow == kForbidden.end())
        return std::nullopt;
    return std::string(arrow->from) + " must not know " + std::string(arrow->to);
}

Objection objectionInModule(const IncludeDirective& include, const std::string& target)
{
    if (!include.angled && std::ranges::find(kSeam, include.target) != kSeam.end())
        return std::nullopt;
    if (target.empty() && include.angled && isStandardHeader(include.target))
        return std::nullopt;
    if (roomOf(target) == "src")
        return std::nullopt;
    return "the module includes the standard library, itself and the platform's four headers only";
}

Objection objectionInPlatform(const std::string& includer, const IncludeDirective& include, const std::string& target)
{
    if (roomOf(target) == "platform")
        return std::nullopt;
    if (target.empty() && include.angled && (isStandardHeader(include.target) || includer == "platform/windows.h"))
        return std::nullopt;
    return "the platform includes itself and the standard library only";
}

Objection objectionInEmbedded(const IncludeDirective& include, const std::string& target)
{
    const std::string room = roomOf(target);
    if (room == "platform" || room == "embedded" || (target.empty() && include.angled))
        return std::nullopt;
    return "the embedded platform includes the platform, itself and libraries only";
}

Objection objectionTo(const std::string& includer, const IncludeDirective& include, const Paths& paths)
{
    const std::string target = resolved(includer, include, paths);
    if (Objection objection = objectionToForbiddenArrow(includer, target))
        return objection;
    const std::string room = roomOf(includer);
    if (room == "src")
        return objectionInModule(include, target);
    if (room == "platform")
        return objectionInPlatform(includer, include, target);
    if (room == "embedded")
        return objectionInEmbedded(include, target);
    return std::nullopt;
}

} // namespace

std::vector<IncludeDirective> includesOf(const SourceFile& file)
{
    static const std::regex directive(R"(^\s*#\s*include\s*([<"])([^>"]+)[>"].*)");
    std::vector<IncludeDirective> includes;
    std::size_t number = 0;
    for (const std::string& line : linesOf(file.text)) {
        ++number;
        std::smatch match;
        if (std::regex_match(line, match, directive))
            includes.push_back({number, match[2], match[1] == "<"});
    }
    return includes;
}

std::vector<std::string> wrongIncludes(const std::vector<SourceFile>& files)
{
    Paths paths;
    for (const SourceFile& file : files)
        paths.insert(file.path);
    std::vector<std::string> complaints;
    for (const SourceFile& file : files)
        for (const IncludeDirective& include : includesOf(file))
            if (const Objection objection = objectionTo(file.path, include, paths))
                complaints.push_back(complaint(file.path, include.line, include.target + ": " + *objection));
    return complaints;
}

} // namespace Tests
