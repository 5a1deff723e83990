// Runs a command on each of its drawings.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "orvelcs/cli/output.h"
#include "orvelcs/drawing/drawing_files.h"

namespace Orvelcs {

/// The result of one drawing of a batch, and its part of the JSON document.
struct DrawingOutcome {
    ExitStatus status = ExitStatus::done;
    Json json;
};

using DrawingWork = std::function<DrawingOutcome(const std::string& file)>;

/// Runs `work` on each file in the order given, and prints the JSON document: an object for one drawing that the
/// command line names, else an array. A batch shows its progress, and prints what each drawing gave before it takes the
/// next. It ends after the drawing in hand when it is interrupted, which it reports, or when nobody reads the output.
ExitStatus forEachDrawing(const DrawingFiles& files, Output& output, const DrawingWork& work);
/// The same for a command without --files-from.
ExitStatus forEachDrawing(const std::vector<std::string>& files, Output& output, const DrawingWork& work);

} // namespace Orvelcs
