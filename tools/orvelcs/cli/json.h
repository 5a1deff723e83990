// JSON as the program prints it: keys in the order in which they were added, null for what is absent.
#pragma once

#include <optional>
#include <string>

#include <nlohmann/json.hpp>

#include "embedded/base/text.h"

namespace Orvelcs {

using Json = nlohmann::ordered_json;

inline Json jsonText(const std::optional<std::wstring>& text)
{
    return text ? Json(Embedded::utf8FromWide(*text)) : Json(nullptr);
}

template <class Value>
Json jsonValue(const std::optional<Value>& value)
{
    return value ? Json(*value) : Json(nullptr);
}

/// The text without a final newline. Bytes that are not UTF-8 become U+FFFD.
inline std::string printedJson(const Json& json)
{
    constexpr int kIndentation = 2;
    return json.dump(kIndentation, ' ', false, Json::error_handler_t::replace);
}

} // namespace Orvelcs
