#pragma once

#include <string>
#include <string_view>

// Texts of the product: drawings hold UTF-16, the survey library UTF-8, and add-ons that were made for one system alone
// ask for wide texts.
namespace Core {

/// Whatever is not UTF-8 becomes U+FFFD.
std::u16string toUtf16(std::string_view utf8);
/// An unpaired surrogate is kept as it is.
std::u16string toUtf16(std::wstring_view wide);
/// An unpaired surrogate becomes U+FFFD.
std::string toUtf8(std::u16string_view utf16);
std::string toUtf8(std::wstring_view wide);
/// Surrogate pairs become one character where a wide character has 32 bits.
std::wstring toWide(std::u16string_view utf16);
std::wstring toWide(std::string_view utf8);

/// Whether the texts are equal when the case of the ASCII letters is passed over.
bool sameCode(std::string_view left, std::string_view right);

} // namespace Core
