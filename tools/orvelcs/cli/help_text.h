// The help of the program and of its commands, as text of a given width.
#pragma once

#include <cstddef>
#include <string>

#include <CLI/App.hpp>
#include <CLI/Config.hpp>

namespace Orvelcs {

/// The help of a command, or of the program. Lines end within `width` columns unless a word is longer.
std::string helpText(const CLI::App& command, std::size_t width);

} // namespace Orvelcs
