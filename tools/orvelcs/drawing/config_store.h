// The places in which a transformation configuration is kept, as the program reads and changes them.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "orvelcs/cli/command.h"
#include "orvelcs/drawing/recording_reactor.h"

namespace Orvelcs {

/// Which store a command works on: a drawing's, the user's settings file or the user's part of the registry.
struct ConfigTarget {
    std::string drawing;
    CLI::Option* drawingOption = nullptr;
    bool user = false;
    bool registryStore = false;

    bool isDrawing() const { return drawingOption->count() > 0; }
    /// What a message about the store begins with.
    std::string subject() const;
};

/// Adds --drawing and --user, and --registry-store where it can be chosen.
void addConfigTarget(CLI::App& command, ConfigTarget& target, bool withRegistryStore);
/// Throws Failure for wrong usage unless exactly one store is chosen. `drawingIsPrinted`: a changed drawing from
/// standard input goes to standard output.
void checkConfigTarget(const ConfigTarget& target, bool drawingIsPrinted, const Output& output);

/// The stored text; nothing where there is none. Nothing is made by asking. Throws Failure for a store that cannot be
/// read, or whose text is not what the module would read from it.
std::optional<std::wstring> readConfig(const ConfigTarget& target, const Output& output);
/// Throws Failure for a settings file of the user's that is there and cannot be read. To the module it is absent.
void checkUserConfig();

/// What became of a change, and what reactors heard of it.
struct ConfigChange {
    bool result = false;
    std::vector<Event> events;
    std::optional<std::string> error; // none where it was done
};

/// Asks for the stored text, as readConfig does.
using StoredConfig = std::function<std::optional<std::wstring>()>;
/// Makes the new text, while nobody else changes the stored one.
using ConfigEdit = std::function<std::wstring(const StoredConfig& stored)>;

/// Replaces the drawing's or the user's text, and saves the drawing. Throws Failure for a drawing that cannot be
/// loaded, and for a settings file that is a folder, a device or a pipe.
ConfigChange writeConfig(const ConfigTarget& target, const ConfigEdit& edit, Output& output);
/// The module's clearing: the drawing's text becomes empty; for the user the registry's store does.
ConfigChange clearConfig(const ConfigTarget& target, Output& output);

} // namespace Orvelcs
