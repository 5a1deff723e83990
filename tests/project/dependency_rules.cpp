#include "project/dependency_rules.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <optional>
#include <regex>
#include <set>
#include <string_view>
#include <vector>

namespace Tests {
namespace {

using namespace std::string_view_literals;

using Paths = std::set<std::string>;
using Objection = std::optional<std::string>;

constexpr std::array kPlatformHeaders{"platform/foundation.h"sv, "platform/host.h"sv, "platform/spatial_reference.h"sv,
                                      "platform/win32.h"sv};

/// A room and the rooms whose headers its files may include, besides its own and the platform's.
struct Room {
    std::string_view folder;
    std::vector<std::string_view> uses;
};

const std::vector<Room>& rooms()
{
    static const std::vector<Room> all{
        {"src/storage/", {}},
        {"src/coordsys/", {"src/storage/"}},
        {"src/transformation/", {"src/storage/", "src/coordsys/"}},
        {"src/frame/", {"src/storage/", "src/coordsys/", "src/transformation/"}},

        {"embedded/base/json/", {"embedded/base/"}},
        {"embedded/base/", {}},
        {"embedded/diagnostics/", {"embedded/base/"}},
        {"embedded/foundation/", {"embedded/base/", "embedded/diagnostics/"}},
        {"embedded/windows/", {"embedded/base/", "embedded/diagnostics/"}},

        {"embedded/host/database/", {"embedded/base/", "embedded/diagnostics/"}},
        {"embedded/host/application/", {"embedded/base/", "embedded/diagnostics/", "embedded/host/database/"}},
        {"embedded/host/drawing_file/", {"embedded/base/", "embedded/host/database/", "embedded/host/application/"}},

        {"embedded/spatial_reference/projjson/", {"embedded/base/"}},
        {"embedded/spatial_reference/catalog/", {"embedded/base/", "embedded/spatial_reference/projjson/"}},
        {"embedded/spatial_reference/definitions/",
         {"embedded/base/", "embedded/diagnostics/", "embedded/spatial_reference/projjson/",
          "embedded/spatial_reference/catalog/"}},
        {"embedded/spatial_reference/streams/",
         {"embedded/base/", "embedded/spatial_reference/projjson/", "embedded/spatial_reference/definitions/"}},
        {"embedded/spatial_reference/operations/",
         {"embedded/base/", "embedded/spatial_reference/projjson/", "embedded/spatial_reference/catalog/",
          "embedded/spatial_reference/definitions/"}},

        {"tools/orvelcs/cli/", {"embedded/"}},
        {"tools/orvelcs/output/", {"embedded/", "tools/orvelcs/cli/"}},
        {"tools/orvelcs/drawing/", {"src/coordsys/", "embedded/", "tools/orvelcs/cli/", "tools/orvelcs/output/"}},
        {"tools/orvelcs/commands/",
         {"src/coordsys/", "src/storage/", "embedded/", "tools/orvelcs/cli/", "tools/orvelcs/output/",
          "tools/orvelcs/drawing/"}},
    };
    return all;
}

const Room* findRoom(std::string_view file)
{
    const auto found = std::ranges::find_if(rooms(), [&](const Room& room) { return file.starts_with(room.folder); });
    return found != rooms().end() ? &*found : nullptr;
}

bool isStandardHeader(const std::string& name)
{
    // Only headers of the C++ library have neither an extension nor a folder.
    return std::ranges::all_of(name,
                               [](char c) { return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_'; });
}

/// The file of the repository that the directive includes. Empty if it is no file of the repository.
std::string resolve(const std::string& includer, const IncludeDirective& include, const Paths& paths)
{
    const auto folder = std::filesystem::path(includer).parent_path();
    std::vector<std::filesystem::path> candidates{include.target};
    if (!include.isAngled)
        candidates.push_back(folder / include.target);
    for (const char* top : {"src", "tools"})
        candidates.push_back(std::filesystem::path(top) / include.target);
    for (const auto& candidate : candidates) {
        std::string path = candidate.lexically_normal().generic_string();
        if (paths.contains(path))
            return path;
    }
    return {};
}

Objection objectionBetweenRooms(const std::string& from, const std::string& to)
{
    const Room* const user = findRoom(from);
    const Room* const used = findRoom(to);
    if (user == nullptr || used == nullptr || user == used)
        return std::nullopt;
    const bool isAllowed =
        std::ranges::any_of(user->uses, [&](std::string_view folder) { return used->folder.starts_with(folder); });
    if (isAllowed)
        return std::nullopt;
    return std::string(user->folder) + " must not know " + std::string(used->folder);
}

/// The compilers' own header of SSE2 instructions. The module can be built without it.
constexpr std::string_view kVectorHeader = "emmintrin.h";

Objection objectionInModule(const IncludeDirective& include, const std::string& target)
{
    if (!include.isAngled && std::ranges::find(kPlatformHeaders, include.target) != kPlatformHeaders.end())
        return std::nullopt;
    if (target.empty() && include.isAngled && (isStandardHeader(include.target) || include.target == kVectorHeader))
        return std::nullopt;
    if (topFolder(target) == "src")
        return std::nullopt;
    return "the module includes the standard library, itself and the platform's four headers only";
}

Objection objectionInPlatform(const std::string& includer, const IncludeDirective& include, const std::string& target)
{
    if (topFolder(target) == "platform")
        return std::nullopt;
    if (target.empty() && include.isAngled && (isStandardHeader(include.target) || includer == "platform/win32.h"))
        return std::nullopt;
    return "the platform includes itself and the standard library only";
}

Objection objectionInEmbedded(const IncludeDirective& include, const std::string& target)
{
    const std::string room = topFolder(target);
    if (room == "platform" || room == "embedded" || (target.empty() && include.isAngled))
        return std::nullopt;
    return "the embedded platform includes the platform, itself and libraries only";
}

/// The tools may include the exports of the module. The command codec may include its run-length codec.
Objection objectionInTools(const std::string& includer, const std::string& target)
{
    const bool isCodec = includer == "tools/orvelcs/commands/codec.cpp" && target == "src/storage/run_length.h";
    if (topFolder(target) != "src" || target.starts_with("src/coordsys/orvel_") || isCodec)
        return std::nullopt;
    return "the tools include the module's public headers only";
}

/// What docs/clients.md says of a client's sources holds for the examples. They are their own hosts besides.
Objection objectionInExample(const IncludeDirective& include, const std::string& target)
{
    if (target.starts_with("src/coordsys/orvel_") || target == "embedded/host/application/application.h" ||
        target == "embedded/host/drawing_file/drawing_file.h" ||
        std::ranges::find(kPlatformHeaders, target) != kPlatformHeaders.end() ||
        (target.empty() && include.isAngled && isStandardHeader(include.target)))
        return std::nullopt;
    return "an example includes the module's public headers, the platform's four, two of the host and the standard "
           "library only";
}

Objection findObjection(const std::string& includer, const IncludeDirective& include, const Paths& paths)
{
    const std::string target = resolve(includer, include, paths);
    if (Objection objection = objectionBetweenRooms(includer, target))
        return objection;
    const std::string room = topFolder(includer);
    if (room == "src")
        return objectionInModule(include, target);
    if (room == "platform")
        return objectionInPlatform(includer, include, target);
    if (room == "embedded")
        return objectionInEmbedded(include, target);
    if (room == "tools")
        return objectionInTools(includer, target);
    if (room == "examples" && !includer.starts_with("examples/port/"))
        return objectionInExample(include, target);
    return std::nullopt;
}

} // namespace

bool belongsToRoom(const std::string& file)
{
    return findRoom(file) != nullptr;
}

std::vector<IncludeDirective> parseIncludes(const SourceFile& file)
{
    static const std::regex directive(R"(^\s*#\s*include\s*([<"])([^>"]+)[>"].*)");
    std::vector<IncludeDirective> includes;
    std::size_t number = 0;
    for (const std::string& line : splitLines(file.text)) {
        ++number;
        std::smatch match;
        if (std::regex_match(line, match, directive))
            includes.push_back({number, match[2], match[1] == "<"});
    }
    return includes;
}

std::vector<std::string> findForbiddenIncludes(const std::vector<SourceFile>& files)
{
    Paths paths;
    for (const SourceFile& file : files)
        paths.insert(file.path);
    std::vector<std::string> complaints;
    for (const SourceFile& file : files)
        for (const IncludeDirective& include : parseIncludes(file))
            if (const Objection objection = findObjection(file.path, include, paths))
                complaints.push_back(formatComplaint(file.path, include.line, include.target + ": " + *objection));
    return complaints;
}

} // namespace Tests
