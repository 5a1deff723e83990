#include "orvelcs/config_store.h"

#include <algorithm>
#include <filesystem>
#include <functional>
#include <system_error>

#include <fmt/format.h>

#include "coordsys/orvel_transformation_config.h"
#include "embedded/foundation/text.h"
#include "embedded/foundation/utf8_path.h"
#include "embedded/windows/registry_file.h"
#include "orvelcs/drawings.h"
#include "orvelcs/loaded_module.h"
#include "orvelcs/standard_streams.h"
#include "orvelcs/text_bytes.h"
#include "platform/windows.h"
#include "storage/host_holders.h"
#include "transformation/item_chunks.h"
#include "transformation/registry_settings.h"
#include "transformation/registry_value.h"
#include "transformation/user_settings_file.h"

namespace Orvelcs {

namespace CoordinateSystem = Zentara::Gis::Orvel::CoordinateSystem;
using ConfigTargetType = CoordinateSystem::CsTransformationConfigTargetType;

namespace {

constexpr const char* kRegistryStore = "registry store";

/// What a reader of the module's handed out; nothing when it read nothing.
std::optional<std::wstring> taken(const std::function<bool(wchar_t*&)>& read)
{
    wchar_t* text = nullptr;
    if (!read(text))
        return std::nullopt;
    const Orvel::HostString owned(text);
    return text;
}

/// The module writes its paths with backslashes on every system.
std::filesystem::path settingsFile()
{
    std::string path = Embedded::utf8FromWide(Orvel::GetUserTransformationSettingsPath());
    std::ranges::replace(path, '\\', '/');
    return Embedded::pathFromUtf8(path);
}

std::optional<std::wstring> readDrawing(const std::string& file)
{
    OpenDrawing drawing(file);
    require(file, drawing.load());
    return taken(
        [](wchar_t*& text) { return CoordinateSystem::GetCsTransformationConfig(text, ConfigTargetType::Drawing); });
}

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

std::optional<std::wstring> readSettingsFile()
{
    const std::filesystem::path file = settingsFile();
    checkPlace(file);
    if (file.empty() || !std::filesystem::exists(file))
        return std::nullopt;
    checkSettingsFile(file);
    auto text =
        taken([](wchar_t*& out) { return CoordinateSystem::GetCsTransformationConfig(out, ConfigTargetType::User); });
    if (!text)
        throw Failure(file.string(), "cannot be read");
    return text;
}

void checkRegistry()
{
    if (const std::string fault = Embedded::checkRegistryFile(); !fault.empty())
        throw Failure(kRegistryStore, fault);
}

std::optional<std::wstring> readRegistryStore()
{
    checkRegistry();
    std::vector<std::wstring> names;
    if (!Orvel::RegistryEnumValueNames(HKEY_CURRENT_USER, Orvel::RegistrySettingsKey(), names))
        return std::nullopt; // reading the store would make it
    auto text = taken(Orvel::ReadRegistryTransformationSettings);
    if (!text)
        throw Failure(kRegistryStore, "cannot be read");
    return text;
}

using ModuleCall = std::function<bool(ConfigTargetType)>;

ConfigChange callModule(const ModuleCall& call, ConfigTargetType target)
{
    RecordingReactor reactor({});
    ConfigChange change;
    change.result = call(target);
    change.events = reactor.events();
    return change;
}

ConfigChange changeDrawing(const std::string& file, const ModuleCall& call, Output& output)
{
    OpenDrawing drawing(file);
    require(file, drawing.load());
    ConfigChange change = callModule(call, ConfigTargetType::Drawing);
    if (!change.result) {
        change.error = "the module could not store the configuration";
    } else if (const Embedded::FileResult saved = drawing.save(output); saved.status != Qeapp::eOk) {
        change.result = false;
        change.error = describe(file, saved);
    }
    return change;
}

std::string whyNotWritten(const std::filesystem::path& file)
{
    if (file.empty())
        return "there is no folder for it";
    if (!std::filesystem::is_directory(file.parent_path()))
        return "its folder does not exist and is not made";
    return "cannot be written";
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

std::string ConfigTarget::subject() const
{
    if (isDrawing())
        return drawing;
    return registryStore ? kRegistryStore : settingsFileName();
}

void addConfigTarget(CLI::App& command, ConfigTarget& target, bool withRegistryStore)
{
    target.drawingOption = addArgument(command, "--drawing FILE", target.drawing, "the drawing's configuration");
    command.add_flag("--user", target.user, "the user's configuration, in the settings file");
    if (withRegistryStore)
        command.add_flag("--registry-store", target.registryStore, "the user's configuration in the registry");
}

void checkConfigTarget(const ConfigTarget& target, bool drawingIsPrinted, const Output& output)
{
    const int chosen = (target.isDrawing() ? 1 : 0) + (target.user ? 1 : 0) + (target.registryStore ? 1 : 0);
    if (chosen != 1)
        throw wrongUsage("--drawing", chosen == 0 ? "or --user is required: whose configuration?"
                                                  : "more than one store is named; name one");
    if (target.isDrawing())
        checkFileNames({target.drawing}, drawingIsPrinted, output);
}

std::optional<std::wstring> readConfig(const ConfigTarget& target)
{
    if (target.isDrawing())
        return readDrawing(target.drawing);
    return target.registryStore ? readRegistryStore() : readSettingsFile();
}

void checkUserConfig()
{
    static_cast<void>(readSettingsFile()); // it throws
}

ConfigChange writeConfig(const ConfigTarget& target, const std::wstring& text, Output& output)
{
    const LoadedModule module;
    const ModuleCall call = [&](ConfigTargetType type) {
        return CoordinateSystem::SetCsTransformationConfig(text.c_str(), type);
    };
    if (target.isDrawing())
        return changeDrawing(target.drawing, call, output);
    const std::filesystem::path file = settingsFile();
    checkPlace(file);
    ConfigChange change = callModule(call, ConfigTargetType::User);
    if (!change.result)
        change.error = whyNotWritten(file);
    else if (readSettingsFile() != asReadBack(text))
        change.error = "was not written to its end";
    return change;
}

ConfigChange clearConfig(const ConfigTarget& target, Output& output)
{
    const LoadedModule module;
    const ModuleCall call = CoordinateSystem::ClearCsTransformationConfig;
    if (target.isDrawing())
        return changeDrawing(target.drawing, call, output);
    ConfigChange change = callModule(call, ConfigTargetType::User);
    if (!change.result) {
        const std::string fault = Embedded::checkRegistryFile();
        change.error = fault.empty() ? "the registry's store could not be emptied" : fault;
    }
    return change;
}

std::string settingsFileName()
{
    const std::string name = settingsFile().string();
    return name.empty() ? "settings file" : name;
}

} // namespace Orvelcs
