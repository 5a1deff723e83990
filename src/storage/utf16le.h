// Wide text as UTF-16 little-endian bytes, the same bytes on every system. A wide character is a UTF-16 unit or a code
// point, depending on the system. Unpaired surrogates stay as they are; a value that is not a code point becomes
// U+FFFD.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace Orvel {

/// The text's bytes with a terminating NUL unit.
std::vector<unsigned char> encodeUtf16le(std::wstring_view text);

/// The text up to its first NUL unit, or up to the end of the bytes. An odd last byte is ignored.
std::wstring decodeUtf16le(const unsigned char* bytes, std::size_t lengthInBytes);

/// The length in bytes up to the first NUL unit, which the caller guarantees.
std::size_t utf16leLength(const unsigned char* text);

} // namespace Orvel
