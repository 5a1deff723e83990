// Saves drawings to memory and loads them. Writing ten thousand files would take much longer.
#pragma once

#include <optional>
#include <string>

#include "support/drawing.h"

namespace Tests {

/// Returns nothing if the save is refused.
std::optional<std::string> saveToMemory(const Drawing& drawing, int version);

/// Throws if the host refuses the bytes.
Drawing loadDrawing(const std::string& bytes);

} // namespace Tests
