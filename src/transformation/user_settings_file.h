// The user's settings file with the transformation configuration: UTF-8, a line for each item.
#pragma once

#include <string>

namespace Orvel {

/// The full path, from the folder in the environment or else the user's local application data; empty when there is no
/// folder. Nothing is created.
[[nodiscard]] std::wstring GetUserTransformationSettingsPath();

/// On true `text` is a new host string with the file's lines joined, to be released with qeutDelBuffer; on false the
/// shared empty text: when there is no such file or it cannot be read to its end.
[[nodiscard]] bool ReadUserTransformationSettings(wchar_t*& text);

/// Replaces the file's content by the items of `text`, up to and including the last "</Item>". False when the file
/// cannot be opened, with nothing written, or when an item cannot be converted, with those before it written. After a
/// line that cannot be written no other is written, and the result is true all the same.
[[nodiscard]] bool WriteUserTransformationSettings(const wchar_t* text);

} // namespace Orvel
