// Texts of the catalog as a person compares them.
#pragma once

#include <compare>
#include <cstdint>
#include <string>
#include <string_view>

namespace Embedded {

/// In lower case, blanks at both ends removed.
std::wstring foldCase(std::wstring_view text);

/// What stands before and after the first colon; a code without one is all number.
std::wstring_view authorityOf(std::wstring_view code);
std::wstring_view numberOf(std::wstring_view code);

/// Authority, then number where it is one, then text.
struct CatalogOrder {
    std::wstring authority;
    std::uint64_t number; // after all numbers for what is none
    std::wstring code;
    friend auto operator<=>(const CatalogOrder&, const CatalogOrder&) = default; // NOLINT(modernize-use-nullptr)
};
CatalogOrder catalogOrderOf(std::wstring_view code);

/// What it costs to turn one text into the other: kSwapCost for each swap of neighbours, the commonest slip, and
/// kEditCost for each insertion, deletion or replacement.
inline constexpr std::size_t kSwapCost = 2;
inline constexpr std::size_t kEditCost = 3;
std::size_t editDistance(std::wstring_view left, std::wstring_view right);

} // namespace Embedded
