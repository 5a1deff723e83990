// Configuration texts of any length, similar to a user's.
#pragma once

#include <cstddef>
#include <string>

namespace Bench {

/// The codes of the two coordinate systems of an item.
struct CodePair {
    std::wstring source;
    std::wstring target;
};

/// The codes of the item with that number. All pairs differ.
[[nodiscard]] CodePair pairAt(std::size_t index);
/// A pair that no item has, in neither direction.
[[nodiscard]] CodePair absentPair();

/// The name of the operation that the item with that number chooses.
[[nodiscard]] const wchar_t* nameAt(std::size_t index);

/// A text of `items` elements of about 150 characters, each with the name of an operation in the catalog.
[[nodiscard]] std::wstring configurationText(std::size_t items);

} // namespace Bench
