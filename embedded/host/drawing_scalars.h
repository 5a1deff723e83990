// The single values of a drawing file in the forms that JSON can hold without loss: texts with unpaired surrogates,
// reals that are not finite, handles and bytes. Each pair is the other's inverse; the readers answer nothing for any
// other form.
#pragma once

#include <nlohmann/json.hpp>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "embedded/host/drawing_image.h"

namespace Embedded {

/// A string, or {"units": […]} for a text that is not well-formed.
nlohmann::json jsonFromText(std::wstring_view text);
/// Nothing also for a text with a NUL in it.
std::optional<std::wstring> textFromJson(const nlohmann::json& json);

/// A number, or {"bits": "…"} for one that is not finite: the sixteen hexadecimal digits of its IEEE 754 form.
nlohmann::json jsonFromReal(double real);
std::optional<double> realFromJson(const nlohmann::json& json);

/// Upper-case hexadecimal digits without leading zeros.
std::string textFromHandle(Handle handle);
/// Nothing for "0" either, which names no object.
std::optional<Handle> handleFromText(std::string_view text);

/// Lower-case hexadecimal digits, two a byte.
std::string hexFromBytes(const std::vector<unsigned char>& bytes);
std::optional<std::vector<unsigned char>> bytesFromHex(std::string_view hex);

} // namespace Embedded
