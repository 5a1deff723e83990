// Names of keys and values, which differ by more than case or are the same.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace Embedded {

inline constexpr std::size_t kLongestKeyName = 255; // each in UTF-16 units
inline constexpr std::size_t kLongestValueName = 16'383;

/// The text as it comes back from the file: surrogates that are a pair become the character they stand for.
std::wstring normalName(const wchar_t* text);
std::size_t utf16Length(std::wstring_view text);
/// The parts between the backslashes; empty ones are left out.
std::vector<std::wstring_view> pathParts(std::wstring_view path);

} // namespace Embedded
