// What assigning and clearing have in common: open the drawing, let the module change it, save it if that went well.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "orvelcs/cli/command.h"
#include "orvelcs/drawing/drawings.h"
#include "orvelcs/drawing/recording_reactor.h"
#include "platform/spatial_reference.h"

namespace Orvelcs {

struct ChangeOptions {
    std::vector<std::string> files;
    std::vector<std::string> vetoes;
    bool events = false;
};

/// Adds --events and --veto.
void addChangeOptions(CLI::App& command, ChangeOptions& options);
/// Throws Failure for wrong usage.
void checkChangeOptions(const ChangeOptions& options, const Output& output);
Vetoes vetoesOf(const ChangeOptions& options);
/// Prints the notices that the reactor received of a drawing, where they are wanted and JSON does not tell them.
void printEvents(const std::string& file, const std::vector<Event>& events, const ChangeOptions& options,
                 Output& output);

struct Change {
    /// The module's call.
    std::function<Qeapp::ErrorStatus(QeDbDatabase* database, Zentara::Infrastructure::SpatialReference::Status& status)>
        apply;
    /// What is said of a drawing where it was done, such as "cleared".
    std::string done;
    /// Why the module refused, for a person; without the result's name.
    std::function<std::string(Qeapp::ErrorStatus result)> reason;
};

/// A drawing whose change fails or is vetoed is not written.
ExitStatus changeDrawings(const ChangeOptions& options, const Change& change, Output& output);

/// Prints the JSON of the drawings that a Failure has kept from being changed.
void printUntried(const std::vector<std::string>& files, const Failure& failure, Output& output);

} // namespace Orvelcs
