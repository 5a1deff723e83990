// The golden drawings of the repository, which are stored as SQL text.
#pragma once

#include <filesystem>
#include <string>

#include "support/drawing.h"

namespace Tests {

/// The folder of the golden drawings `empty`, `version_29` and `everything` of one format.
std::filesystem::path goldenFolder(int format);
std::string goldenSql(const std::string& name);
/// The golden drawing as the host prints it.
std::string goldenText(const std::string& name);

/// The drawing `everything`: every kind of object and value, including values that are hard to store.
Drawing drawingOfEverything();

} // namespace Tests
