#include "orvelcs/drawing/config_store.h"
#include "orvelcs/drawing/holders.h"

#include <functional>

#include "coordsys/orvel_transformation_config.h"
#include "embedded/windows/registry_file.h"
#include "orvelcs/cli/error_document.h"
#include "orvelcs/cli/input.h"
#include "orvelcs/drawing/drawing_files.h"
#include "orvelcs/drawing/drawings.h"
#include "orvelcs/drawing/loaded_module.h"
#include "orvelcs/drawing/registry_store.h"
#include "orvelcs/drawing/settings_file.h"

namespace Orvelcs {

namespace CoordinateSystem = Zentara::Gis::Orvel::CoordinateSystem;
using ConfigTargetType = CoordinateSystem::CsTransformationConfigTargetType;

namespace {

std::optional<std::wstring> readOpenDrawing(const std::string& file, const OpenDrawing& drawing)
{
    auto text = copyModuleText(
        [](wchar_t*& out) { return CoordinateSystem::GetCsTransformationConfig(out, ConfigTargetType::Drawing); });
    require(file, drawing.loadingResult());
    return text;
}

std::optional<std::wstring> readDrawing(const std::string& file, const Output& output)
{
    OpenDrawing drawing(file, Embedded::DrawingAccess::reading, output);
    require(file, drawing.load());
    return readOpenDrawing(file, drawing);
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

/// `prepare` is called with the stored text before the call.
ConfigChange changeDrawing(const std::string& file, const std::function<void(const StoredConfig&)>& prepare,
                           const ModuleCall& call, Output& output)
{
    OpenDrawing drawing(file, Embedded::DrawingAccess::changing, output);
    require(file, drawing.load());
    prepare([&] { return readOpenDrawing(file, drawing); });
    ConfigChange change = callModule(call, ConfigTargetType::Drawing);
    if (const Embedded::Expected<void> loading = drawing.loadingResult(); !loading) {
        change.result = false;
        change.error = describe(file, loading.error());
    } else if (!change.result) {
        change.error = "the module could not store the configuration";
    } else if (const Embedded::Expected<void> saved = drawing.save(output); !saved) {
        change.result = false;
        change.error = describe(file, saved.error());
    }
    return change;
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

std::optional<std::wstring> readConfig(const ConfigTarget& target, const Output& output)
{
    if (target.isDrawing())
        return readDrawing(target.drawing, output);
    return target.registryStore ? readRegistryStore() : readSettingsFile();
}

void checkUserConfig()
{
    static_cast<void>(readSettingsFile()); // it throws
}

ConfigChange writeConfig(const ConfigTarget& target, const ConfigEdit& edit, Output& output)
{
    const LoadedModule module;
    std::wstring text;
    const ModuleCall call = [&](ConfigTargetType type) {
        return CoordinateSystem::SetCsTransformationConfig(text.c_str(), type);
    };
    if (target.isDrawing())
        return changeDrawing(
            target.drawing, [&](const StoredConfig& stored) { text = edit(stored); }, call, output);
    text = edit(readSettingsFile);
    ConfigChange change;
    const auto replaced = replaceSettingsFile(text, [&] {
        change = callModule(call, ConfigTargetType::User);
        return change.result;
    });
    if (!replaced) {
        change.result = false;
        change.error = replaced.error().message;
    }
    return change;
}

ConfigChange clearConfig(const ConfigTarget& target, Output& output)
{
    const LoadedModule module;
    const ModuleCall call = CoordinateSystem::ClearCsTransformationConfig;
    if (target.isDrawing())
        return changeDrawing(
            target.drawing, [](const StoredConfig&) {}, call, output);
    ConfigChange change = callModule(call, ConfigTargetType::User);
    if (!change.result) {
        const auto checked = Embedded::checkRegistryFile();
        change.error = checked ? "the registry's store could not be emptied" : checked.error().text();
    }
    return change;
}

std::unique_ptr<LockFile> lockConfig(const ConfigTarget& target, const Output& output)
{
    return target.isDrawing() ? nullptr : lockUserStores(output);
}

ExitStatus reportConfigChange(const ConfigTarget& target, const ConfigChange& change, const std::string& done,
                              Output& output, const Json& more)
{
    if (output.json()) {
        Json json = {{"result", change.result}, {"events", eventsAsJson(change.events)}};
        json.update(more);
        if (change.error)
            json["error"] = errorAsJson(output.command(), target.subject(), std::nullopt, *change.error);
        output.document(json);
    }
    if (change.error)
        output.error(target.subject(), *change.error);
    else if (target.drawing != kStandardStream)
        output.confirm(target.subject(), done);
    return change.error ? ExitStatus::failed : ExitStatus::done;
}

} // namespace Orvelcs
