// Wide text as UTF-8 and as UTF-16 little-endian. A wide character is a UTF-16 unit on Windows and a code point
// elsewhere; unpaired surrogates are kept where the target can hold them.
#pragma once

#include <string>
#include <string_view>

#include "platform/export.h"

namespace Embedded {

/// Returns whether the text has only ASCII characters.
FQCORE_API bool isAscii(std::string_view text);

/// Unpaired surrogates and numbers that are no code point become U+FFFD.
FQCORE_API std::string utf8FromWide(std::wstring_view text);
/// Invalid sequences become U+FFFD.
FQCORE_API std::wstring wideFromUtf8(std::string_view utf8);
FQCORE_API bool isValidUtf8(std::string_view utf8);
/// A text as it may stand in a message: at most some forty characters, on one line, valid UTF-8.
FQCORE_API std::string truncateForMessage(std::string_view utf8);
/// Returns whether utf8FromWide loses nothing of the text: each surrogate has its partner, and every other wide
/// character is a code point.
FQCORE_API bool isWellFormed(std::wstring_view text);

/// Two bytes for each unit, the low byte first; no NUL is added.
FQCORE_API std::string utf16leFromWide(std::wstring_view text);
/// Ignores an odd last byte.
FQCORE_API std::wstring wideFromUtf16le(std::string_view bytes);

} // namespace Embedded
