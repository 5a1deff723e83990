#include "orvelcs/drawing/settings_file.h"
#include "orvelcs/drawing/holders.h"

#include <algorithm>
#include <array>
#include <system_error>

#include "coordsys/orvel_transformation_config.h"
#include "embedded/base/path.h"
#include "embedded/base/staged_file.h"
#include "embedded/base/text.h"
#include "orvelcs/cli/failure.h"
#include "orvelcs/cli/input.h"
#include "orvelcs/cli/user_options.h"
#include "orvelcs/drawing/config_item.h"
#include "orvelcs/drawing/staging_folder.h"
#include "platform/win32.h"

namespace Orvelcs {
namespace {

/// Throws Failure for what the module must not open, behind all links: a pipe waits for its writer, and a device may
/// have no end.
void checkPlace(const std::filesystem::path& file)
{
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(file, error);
    switch (status.type()) {
    case std::filesystem::file_type::regular:
    case std::filesystem::file_type::not_found:
        return;
    case std::filesystem::file_type::directory:
        throw Failure(file.string(), "is a folder");
    case std::filesystem::file_type::none:
        throw Failure(file.string(), "cannot be looked up: " + error.message());
    default:
        throw Failure(file.string(), "is not a regular file");
    }
}

/// What the module reads back once it has written the text: the items without their line feeds.
std::wstring storedText(const std::wstring& text)
{
    std::wstring kept = text.substr(0, endOfLastItem(text));
    std::erase(kept, L'\n');
    return kept;
}

/// The folder in which the module looks for the file (docs/formats/transformation-stores.md); empty where there is
/// none.
std::wstring userFolder()
{
    constexpr std::size_t kCapacity = 260; // of the system's own folder paths; a longer value counts as none
    std::array<wchar_t, kCapacity> folder{};
    std::size_t characters = 0;
    if (_wgetenv_s(&characters, folder.data(), folder.size(), Embedded::wideFromUtf8(kUserFolderVariable).c_str()) ==
            0 &&
        folder[0] != L'\0')
        return folder.data();
    if (!SHGetSpecialFolderPathW(nullptr, folder.data(), CSIDL_LOCAL_APPDATA, FALSE))
        return {};
    return folder.data() + std::wstring(L"/Zentara/User Geospatial Coordinate Systems");
}

} // namespace

std::filesystem::path settingsFile()
{
    const std::wstring folder = userFolder();
    if (folder.empty())
        return {};
    std::string path = Embedded::utf8FromWide(folder + L"/TransformationSetting.xml");
    std::ranges::replace(path, '\\', '/'); // the module reads a backslash as a separator on every system
    return Embedded::pathFromUtf8(path);
}

std::string settingsFileName()
{
    const std::string name = settingsFile().string();
    return name.empty() ? "settings file" : name;
}

std::filesystem::path settingsFolder(const std::filesystem::path& file)
{
    std::error_code error;
    const std::filesystem::path target = std::filesystem::weakly_canonical(file, error);
    return (error ? file : target).parent_path();
}

std::optional<std::wstring> readSettingsFile()
{
    const std::filesystem::path file = settingsFile();
    if (file.empty())
        return std::nullopt;
    checkPlace(file);
    if (!std::filesystem::exists(file))
        return std::nullopt;
    static_cast<void>(readText(file.string())); // throws where the module would give other text than the file holds
    auto text = copyModuleText([](wchar_t*& out) {
        return Zentara::Gis::Orvel::CoordinateSystem::GetCsTransformationConfig(
            out, Zentara::Gis::Orvel::CoordinateSystem::CsTransformationConfigTargetType::User);
    });
    if (!text)
        throw Failure(file.string(), "cannot be read");
    return text;
}

Embedded::Expected<void> replaceSettingsFile(const std::wstring& text, const std::function<bool()>& write)
{
    const std::filesystem::path file = settingsFile();
    checkPlace(file);
    std::string bytes;
    {
        const StagingFolder staging(settingsFolder(file));
        if (!write())
            return Embedded::failure(0, "cannot be written", file.string());
        if (readSettingsFile() != storedText(text))
            return Embedded::failure(0, "was not written to its end", file.string());
        bytes = readWhole(settingsFile().string());
    }
    return Embedded::replaceFile(file, bytes);
}

} // namespace Orvelcs
