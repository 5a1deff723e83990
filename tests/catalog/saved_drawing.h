// Drawings through the host's save and back with no file in between: what ten thousand files would tell beyond their
// text is how fast the disk is.
#pragma once

#include <optional>
#include <string>

#include "support/drawing.h"

namespace Tests {

/// The text of the drawing file that the host's save makes; nothing where the save is refused.
std::optional<std::string> savedText(const Drawing& drawing, int version);

/// The drawing that the host opens from such a text; throws where it refuses.
Drawing openedDrawing(const std::string& text);

} // namespace Tests
