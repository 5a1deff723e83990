// Reads and changes the stores of transformation configurations.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "orvelcs/cli/command.h"
#include "orvelcs/drawing/recording_reactor.h"
#include "orvelcs/drawing/user_stores_lock.h"

namespace Orvelcs {

/// Which store a command works on: a drawing's, the user's settings file or the user's part of the registry.
struct ConfigTarget {
    std::string drawing;
    CLI::Option* drawingOption = nullptr;
    bool user = false;
    bool registryStore = false;

    bool isDrawing() const { return drawingOption->count() > 0; }
    bool isChosen() const { return isDrawing() || user || registryStore; }
    /// The name of the store in messages.
    std::string subject() const;
};

/// Adds --drawing and --user, and --registry-store where it can be chosen.
void addConfigTarget(CLI::App& command, ConfigTarget& target, bool withRegistryStore);
/// Throws Failure for wrong usage unless exactly one store is chosen. `drawingIsPrinted`: a changed drawing from
/// standard input goes to standard output.
void checkConfigTarget(const ConfigTarget& target, bool drawingIsPrinted, const Output& output);

/// The stored text; nothing where there is none. Creates nothing. Throws Failure for a store that cannot be read, or
/// from which the module would read another text.
std::optional<std::wstring> readConfig(const ConfigTarget& target, const Output& output);
/// Throws Failure when the user's settings file exists and cannot be read. The module treats such a file as absent.
void checkUserConfig();

/// The result of a change and the events that a reactor received.
struct ConfigChange {
    bool result = false;
    std::vector<Event> events;
    std::optional<std::string> error; // none where it was done
};

/// Reads the stored text, as readConfig does.
using StoredConfig = std::function<std::optional<std::wstring>()>;
/// Makes the new text. No other process changes the stored one in the meantime.
using ConfigEdit = std::function<std::wstring(const StoredConfig& stored)>;

/// Replaces the drawing's or the user's text, and saves the drawing. Throws Failure for a drawing that cannot be
/// loaded, and for a settings file that is a folder, a device or a pipe.
ConfigChange writeConfig(const ConfigTarget& target, const ConfigEdit& edit, Output& output);
/// The module's clearing: the drawing's text becomes empty; for the user the registry's store does.
ConfigChange clearConfig(const ConfigTarget& target, Output& output);

/// The lock for reading and changing a store of the user's. A drawing needs none.
std::unique_ptr<LockFile> lockConfig(const ConfigTarget& target, const Output& output);

/// The JSON of a change that was not begun.
inline const Json kConfigNotChanged = {{"result", false}, {"events", Json::array()}};
/// Prints what became of a change. `done` is for people, and `more` holds further members of the JSON.
ExitStatus reportConfigChange(const ConfigTarget& target, const ConfigChange& change, const std::string& done,
                              Output& output, const Json& more = Json::object());

} // namespace Orvelcs
