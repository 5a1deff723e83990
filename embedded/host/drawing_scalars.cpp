#include "embedded/host/drawing_scalars.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <system_error>
#include <type_traits>

#include "embedded/foundation/text.h"

namespace Embedded {
namespace {

using nlohmann::json;

constexpr bool kWideIsUtf16 = sizeof(wchar_t) == 2;
constexpr std::string_view kLowerCaseDigits = "0123456789abcdef";
constexpr std::string_view kUpperCaseDigits = "0123456789ABCDEF";

bool isMadeOf(std::string_view text, std::string_view characters)
{
    return text.find_first_not_of(characters) == std::string_view::npos;
}

std::uint64_t numberFromHex(std::string_view digits)
{
    std::uint64_t number = 0;
    static_cast<void>(std::from_chars(digits.data(), digits.data() + digits.size(), number, 16)); // digits were checked
    return number;
}

bool appendUnit(std::wstring& text, std::uint64_t unit)
{
    if (unit == 0 || unit > std::numeric_limits<std::uint32_t>::max() || (kWideIsUtf16 && unit > 0x10FFFF))
        return false;
    if (kWideIsUtf16 && unit > 0xFFFF) {
        text += static_cast<wchar_t>(0xD800 + ((unit - 0x10000) >> 10));
        text += static_cast<wchar_t>(0xDC00 + ((unit - 0x10000) & 0x3FF));
    } else {
        text += static_cast<wchar_t>(unit);
    }
    return true;
}

const json* onlyMember(const json& object, const char* name)
{
    if (!object.is_object() || object.size() != 1)
        return nullptr;
    const auto member = object.find(name);
    return member == object.end() ? nullptr : &*member;
}

std::optional<std::wstring> textFromUnits(const json& units)
{
    if (!units.is_array())
        return std::nullopt;
    std::wstring text;
    for (const json& unit : units) {
        if (!unit.is_number_unsigned() || !appendUnit(text, unit.get<std::uint64_t>()))
            return std::nullopt;
    }
    return text;
}

} // namespace

json jsonFromText(std::wstring_view text)
{
    if (isWellFormed(text))
        return utf8FromWide(text);
    json units = json::array();
    for (const wchar_t unit : text)
        units.push_back(static_cast<std::make_unsigned_t<wchar_t>>(unit));
    return {{"units", std::move(units)}};
}

std::optional<std::wstring> textFromJson(const json& value)
{
    if (const json* units = onlyMember(value, "units"))
        return textFromUnits(*units);
    if (!value.is_string())
        return std::nullopt;
    const auto& utf8 = value.get_ref<const std::string&>();
    if (utf8.find('\0') != std::string::npos)
        return std::nullopt;
    return wideFromUtf8(utf8);
}

json jsonFromReal(double real)
{
    if (std::isfinite(real))
        return real;
    std::string digits(16, '0');
    auto bits = std::bit_cast<std::uint64_t>(real);
    for (auto digit = digits.rbegin(); digit != digits.rend(); ++digit, bits >>= 4)
        *digit = kLowerCaseDigits[bits & 0xF];
    return {{"bits", std::move(digits)}};
}

std::optional<double> realFromJson(const json& value)
{
    if (value.is_number())
        return value.get<double>();
    const json* bits = onlyMember(value, "bits");
    if (bits == nullptr || !bits->is_string())
        return std::nullopt;
    const auto& digits = bits->get_ref<const std::string&>();
    if (digits.size() != 16 || !isMadeOf(digits, kLowerCaseDigits))
        return std::nullopt;
    const auto real = std::bit_cast<double>(numberFromHex(digits));
    return std::isfinite(real) ? std::nullopt : std::optional(real);
}

std::string textFromHandle(Handle handle)
{
    std::string text;
    do {
        text += kUpperCaseDigits[handle & 0xF];
        handle >>= 4;
    } while (handle != 0);
    std::reverse(text.begin(), text.end());
    return text;
}

std::optional<Handle> handleFromText(std::string_view text)
{
    if (text.empty() || text.size() > 16 || text.front() == '0' || !isMadeOf(text, kUpperCaseDigits))
        return std::nullopt;
    return numberFromHex(text);
}

std::string hexFromBytes(const std::vector<unsigned char>& bytes)
{
    std::string hex;
    hex.reserve(2 * bytes.size());
    for (const unsigned char byte : bytes) {
        hex += kLowerCaseDigits[byte >> 4];
        hex += kLowerCaseDigits[byte & 0xF];
    }
    return hex;
}

std::optional<std::vector<unsigned char>> bytesFromHex(std::string_view hex)
{
    if (hex.size() % 2 != 0 || !isMadeOf(hex, kLowerCaseDigits))
        return std::nullopt;
    std::vector<unsigned char> bytes;
    bytes.reserve(hex.size() / 2);
    for (; !hex.empty(); hex.remove_prefix(2))
        bytes.push_back(static_cast<unsigned char>(numberFromHex(hex.substr(0, 2))));
    return bytes;
}

} // namespace Embedded
