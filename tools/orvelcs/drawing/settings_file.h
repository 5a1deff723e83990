// Finds, reads and replaces the user's settings file.
#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>

#include "embedded/base/error.h"

namespace Orvelcs {

/// The path at which the module looks for the file; empty when there is no folder for it.
std::filesystem::path settingsFile();
/// The file's name in messages.
std::string settingsFileName();
/// The folder of the file that a link of this name leads to, and of the file itself where it is no link.
std::filesystem::path settingsFolder(const std::filesystem::path& file);

/// The text that the module reads from it; nothing where there is no file. Throws Failure for a file that is there and
/// cannot be read.
std::optional<std::wstring> readSettingsFile();

/// Replaces the file by what the module writes for `text` when `write` calls it: whole, or not at all. The Error has
/// the file as its place. The caller holds the lock of the user's stores. Throws Failure for a file that is a folder, a
/// device or a pipe, and when nothing can be written beside it.
Embedded::Expected<void> replaceSettingsFile(const std::wstring& text, const std::function<bool()>& write);

} // namespace Orvelcs
