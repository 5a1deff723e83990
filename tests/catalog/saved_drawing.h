// Saves drawings to memory and loads them. Ten thousand files would only measure the disk.
#pragma once

#include <optional>
#include <string>

#include "support/drawing.h"

namespace Tests {

/// The bytes of the saved drawing; nothing if the save is refused.
std::optional<std::string> savedText(const Drawing& drawing, int version);

/// Loads a drawing from such bytes. Throws if the host refuses them.
Drawing openedDrawing(const std::string& text);

} // namespace Tests
