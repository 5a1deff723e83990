// Configuration texts with the items that they are read as.
#pragma once

#include <ostream>
#include <span>
#include <string_view>
#include <vector>

#include "transformation/item_texts.h"

namespace Tests {

struct CollectionTextCase {
    const char* name;
    std::wstring_view text;
    std::vector<ExpectedItem> items; // with the version of a new item

    friend std::ostream& operator<<(std::ostream& stream, const CollectionTextCase& one) { return stream << one.name; }
};

std::span<const CollectionTextCase> collectionMarkerTexts();
std::span<const CollectionTextCase> collectionSingleTexts();
std::span<const CollectionTextCase> collectionSeveralTexts();

} // namespace Tests
