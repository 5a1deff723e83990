#include "orvelcs/drawing/settings_file.h"

#include <algorithm>
#include <system_error>

#include "coordsys/orvel_transformation_config.h"
#include "embedded/base/path.h"
#include "embedded/base/staged_file.h"
#include "embedded/base/text.h"
#include "orvelcs/cli/failure.h"
#include "orvelcs/cli/standard_streams.h"
#include "orvelcs/cli/text_bytes.h"
#include "orvelcs/drawing/module_text.h"
#include "orvelcs/drawing/staging_folder.h"
#include "transformation/item_chunks.h"
#include "transformation/user_settings_file.h"

namespace Orvelcs {
namespace {

/// Why the module must not open the file, which links are followed to: a pipe waits for its writer, and a device may
/// have no end. Nothing for a regular file, and where there is none.
std::optional<std::string> faultOfPlace(const std::filesystem::path& file)
{
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(file, error);
    switch (status.type()) {
    case std::filesystem::file_type::regular:
    case std::filesystem::file_type::not_found:
        return std::nullopt;
    case std::filesystem::file_type::directory:
        return "is a folder";
    case std::filesystem::file_type::none:
        return "cannot be looked up: " + error.message();
    default:
        return "is not a regular file";
    }
}

/// Throws Failure for what must not be opened.
void checkPlace(const std::filesystem::path& file)
{
    if (const auto fault = faultOfPlace(file))
        throw Failure(file.string(), *fault);
}

/// The module would hand out other text than the file holds, or none, without a word.
void checkSettingsFile(const std::filesystem::path& file)
{
    if (const auto fault = faultOfText(readWhole(file.string())))
        throw Failure(file.string(), *fault);
}

/// What the module reads back once it has written: the chunks, and no line break in them.
std::wstring asReadBack(const std::wstring& text)
{
    std::wstring kept;
    for (const std::wstring_view chunk : Orvel::SplitIntoItemChunks(text))
        kept += chunk;
    std::erase(kept, L'\n');
    return kept;
}

} // namespace

/// The module writes its paths with backslashes on every system.
std::filesystem::path settingsFile()
{
    std::string path = Embedded::utf8FromWide(Orvel::GetUserTransformationSettingsPath());
    std::ranges::replace(path, '\\', '/');
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
    checkSettingsFile(file);
    auto text = copyModuleText([](wchar_t*& out) {
        return Zentara::Gis::Orvel::CoordinateSystem::GetCsTransformationConfig(
            out, Zentara::Gis::Orvel::CoordinateSystem::CsTransformationConfigTargetType::User);
    });
    if (!text)
        throw Failure(file.string(), "cannot be read");
    return text;
}

std::optional<std::string> replaceSettingsFile(const std::wstring& text, const std::function<bool()>& write)
{
    const std::filesystem::path file = settingsFile();
    checkPlace(file);
    std::string bytes;
    {
        const StagingFolder staging(settingsFolder(file));
        if (!write())
            return "cannot be written";
        if (readSettingsFile() != asReadBack(text))
            return "was not written to its end";
        bytes = readWhole(settingsFile().string());
    }
    const auto replaced = Embedded::replaceFile(file, bytes);
    return replaced ? std::nullopt : std::optional(replaced.error().message);
}

} // namespace Orvelcs
