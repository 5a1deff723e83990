// The user's settings file with the transformation configuration: UTF-8, a line for each item.
#pragma once

#include <string>

namespace Orvel {

/// The full path, in the folder that the environment names or else in the user's local application data. Empty when
/// there is no folder. Creates nothing.
[[nodiscard]] std::wstring GetUserTransformationSettingsPath();

/// On true `text` is a new host string with the file's lines joined, which the caller releases with qeutDelBuffer. On
/// false it is the shared empty text: when there is no such file or it cannot be read to its end.
[[nodiscard]] bool ReadUserTransformationSettings(wchar_t*& text);

/// Replaces the file's content by the items of `text`, up to and including the last "</Item>". Returns false when the
/// file cannot be opened, and then writes nothing, or when an item cannot be converted, and then has written those
/// before it. After a line that cannot be written it writes no other and returns true.
[[nodiscard]] bool WriteUserTransformationSettings(const wchar_t* text);

} // namespace Orvel
