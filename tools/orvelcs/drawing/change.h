// Changes drawings through the module, as assign and clear do: opens each, calls the module and saves on success.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "orvelcs/cli/command.h"
#include "orvelcs/drawing/batch.h"
#include "orvelcs/drawing/drawings.h"
#include "orvelcs/drawing/recording_reactor.h"
#include "platform/spatial_reference.h"

namespace Orvelcs {

struct ChangeOptions {
    DrawingFiles files;
    std::vector<std::string> vetoes;
    bool events = false;
};

/// Adds --events and --veto.
void addChangeOptions(CLI::App& command, ChangeOptions& options);
/// Throws Failure for wrong usage.
void checkChangeOptions(const ChangeOptions& options, const Output& output);
Vetoes parseVetoes(const ChangeOptions& options);
/// Prints the events of a drawing where --events is given and JSON is not.
void printEvents(const std::string& file, const std::vector<Event>& events, const ChangeOptions& options,
                 Output& output);

struct Change {
    /// The module's call.
    std::function<Qeapp::ErrorStatus(QeDbDatabase* database, Zentara::Infrastructure::SpatialReference::Status& status)>
        apply;
    /// The confirmation for a drawing, such as "cleared".
    std::string done;
    /// Describes why the module refused, without the name of the result.
    std::function<std::string(Qeapp::ErrorStatus result)> reason;
};

/// Changes each drawing. A drawing whose change fails or is vetoed is not written.
ExitStatus changeDrawings(const ChangeOptions& options, const Change& change, Output& output);

/// What the module would have returned for a drawing that was not opened.
struct UnchangedResult {
    std::optional<int> result;
    int status;
};
/// Prints the JSON of drawings that were not opened because of the Failure, none for wrong usage.
void printUnchanged(const DrawingFiles& files, const Failure& failure, const UnchangedResult& result, Output& output);

} // namespace Orvelcs
