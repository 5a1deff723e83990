#include "module/win32/import_library.h"

#include <algorithm>
#include <stdexcept>
#include <string_view>

#include "support/file_text.h"

namespace Tests {
namespace {

constexpr std::string_view kMark = "!<arch>\n";
constexpr std::size_t kMemberHeader = 60;
constexpr std::string_view kImported = "__imp_";

/// The first member holds the number of symbols and their offsets, both big-endian, and then their names.
std::string_view symbolNames(std::string_view archive)
{
    if (!archive.starts_with(kMark) || archive.substr(kMark.size(), 2) != "/ ")
        throw std::runtime_error("the import library has no table of symbols");
    const std::string_view member = archive.substr(kMark.size());
    const std::size_t size = std::stoul(std::string(member.substr(48, 10)));
    const std::string_view table = member.substr(kMemberHeader, size);
    std::size_t count = 0;
    for (const char byte : table.substr(0, 4))
        count = count * 256 + static_cast<unsigned char>(byte);
    return table.substr(4 + 4 * count);
}

} // namespace

std::set<std::string> importableNames(const std::filesystem::path& library)
{
    const std::string archive = readFile(library);
    std::string_view names = symbolNames(archive);
    std::set<std::string> importable;
    while (!names.empty()) {
        const std::string_view name = names.substr(0, names.find('\0'));
        if (name.starts_with(kImported))
            importable.emplace(name.substr(kImported.size()));
        names.remove_prefix(std::min(names.size(), name.size() + 1));
    }
    return importable;
}

} // namespace Tests
