// Configuration texts with the items that reading them gives, and what is written of those.
#pragma once

#include <ostream>
#include <span>
#include <string_view>

#include "transformation/item_texts.h"

namespace Tests {

struct CollectionTextCase {
    const char* name;
    std::wstring_view text;
    int count;
    ExpectedItem items[5]; // as many as `count` says; the version is that of a new item
    std::wstring_view written;

    friend std::ostream& operator<<(std::ostream& stream, const CollectionTextCase& one) { return stream << one.name; }
};

std::span<const CollectionTextCase> collectionMarkerTexts();
std::span<const CollectionTextCase> collectionSingleTexts();
std::span<const CollectionTextCase> collectionSeveralTexts();

} // namespace Tests
