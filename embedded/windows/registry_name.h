// Names of keys and values. Case does not distinguish them.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace Embedded {

inline constexpr std::size_t kLongestKeyName = 255; // both in UTF-16 units
inline constexpr std::size_t kLongestValueName = 16'383;

/// The text as the file returns it: a pair of surrogates becomes one character. Null is the empty text.
std::wstring normalName(const wchar_t* text);
std::size_t utf16Length(std::wstring_view text);
/// The parts between the backslashes, without empty ones.
std::vector<std::wstring_view> pathParts(std::wstring_view path);

} // namespace Embedded
