// Drawings that lie in the repository, as SQL text.
#pragma once

#include <filesystem>
#include <string>

#include "support/drawing.h"

namespace Tests {

/// Those of one format: `empty`, `version_29` and `everything`.
std::filesystem::path goldenFolder(int format);
std::string goldenSql(const std::string& name);
/// As the host prints it.
std::string goldenText(const std::string& name);

/// What the golden drawing of that name has: every kind of object and value, with those that are hard to store.
Drawing drawingOfEverything();

} // namespace Tests
