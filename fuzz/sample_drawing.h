// A small drawing with every kind of object and value, as the bytes of its file.
#pragma once

#include <string>

namespace Fuzz {

/// Has pages of 4,096 bytes, as drawing files have: each table and each index is one page.
const std::string& sampleDrawing();
/// Has pages of 512 bytes: trees have several levels, and long values have overflow pages.
const std::string& sampleDrawingOfSmallPages();

} // namespace Fuzz
