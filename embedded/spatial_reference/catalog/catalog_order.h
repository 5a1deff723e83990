// Codes and texts of the catalog as a person compares them.
#pragma once

#include <compare>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/export.h"

namespace Embedded {

/// The text in lower case, without blanks at its ends.
ZSR_API std::wstring searchForm(std::wstring_view text);

/// The parts before and after the first colon. A code without a colon has no authority.
std::wstring_view authorityOf(std::wstring_view code);
std::wstring_view numberOf(std::wstring_view code);

/// Sorts codes by authority, then by number, then by text.
struct CatalogOrder {
    std::wstring authority;
    std::uint64_t number; // the largest for what is not a number
    std::wstring code;
    friend auto operator<=>(const CatalogOrder&, const CatalogOrder&) = default; // NOLINT(modernize-use-nullptr)
};
CatalogOrder catalogOrder(std::wstring_view code);

} // namespace Embedded
