// Codes of the form AUTHORITY:CODE.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace Embedded {

struct CatalogCode {
    std::string authority;
    std::string code;

    std::string text() const { return authority + ':' + code; }
    friend bool operator==(const CatalogCode&, const CatalogCode&) = default;
};

/// Splits at the first colon; nothing when either side is empty.
std::optional<CatalogCode> splitCode(std::string_view utf8);

} // namespace Embedded
