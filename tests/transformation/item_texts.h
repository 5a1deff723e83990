// Texts of single items with the fields that they are read as. The item that reads them has other fields at first,
// which distinguish an unchanged field from an empty one.
#pragma once

#include <ostream>
#include <span>
#include <string_view>

#include "transformation/config_items.h"

namespace Tests {

struct ExpectedItem {
    std::wstring_view source;
    std::wstring_view target;
    std::wstring_view name;
    int type = 0;
    std::wstring_view note;

    ItemFields withVersion(const wchar_t* version) const;
};

/// The fields of the item before it reads a text, with a version of its own.
inline constexpr ExpectedItem kUntouched{L"s0", L"t0", L"n0", 7, L"o0"};
inline constexpr const wchar_t* kVersionBefore = L"v0";

struct ItemTextCase {
    const char* name;
    std::wstring_view text;
    ExpectedItem item;

    friend std::ostream& operator<<(std::ostream& stream, const ItemTextCase& one) { return stream << one.name; }
};

std::span<const ItemTextCase> itemShapeTexts();
std::span<const ItemTextCase> itemTagTexts();
std::span<const ItemTextCase> itemTypeTexts();
std::span<const ItemTextCase> itemValueTexts();

} // namespace Tests
