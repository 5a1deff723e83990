// A small drawing with something of everything, as the bytes of its file.
#pragma once

#include <string>

namespace Fuzz {

/// With pages of 4,096 bytes, as drawing files have them: each table and each index is one page.
const std::string& sampleDrawing();
/// With pages of 512 bytes: trees of several levels, and values that need pages of their own.
const std::string& sampleDrawingOfSmallPages();

} // namespace Fuzz
