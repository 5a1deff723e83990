// Texts of single items with what reading them gives. The item that reads them held other fields before, so that what
// is left alone differs from what is emptied.
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

/// What the item held before, in a version of its own.
inline constexpr ExpectedItem kUntouched{L"s0", L"t0", L"n0", 7, L"o0"};
inline constexpr const wchar_t* kVersionBefore = L"v0";

/// What is written of it when nothing was read.
inline constexpr std::wstring_view kUntouchedText = L"<Item><Version>v0</Version><SourceCs>s0</SourceCs>"
                                                    L"<TargetCs>t0</TargetCs><Name>n0</Name><Type>7</Type>"
                                                    L"<Note>o0</Note></Item>";
/// What is written of an item that is not complete.
inline constexpr std::wstring_view kNothing;

struct ItemTextCase {
    const char* name;
    std::wstring_view text;
    ExpectedItem item;
    std::wstring_view written;

    friend std::ostream& operator<<(std::ostream& stream, const ItemTextCase& one) { return stream << one.name; }
};

std::span<const ItemTextCase> itemShapeTexts();
std::span<const ItemTextCase> itemTagTexts();
std::span<const ItemTextCase> itemTypeTexts();
std::span<const ItemTextCase> itemValueTexts();

} // namespace Tests
