// Configuration texts of any length, as a user's would be.
#pragma once

#include <cstddef>
#include <string>

namespace Bench {

/// The codes of the coordinate systems that an item stands between.
struct CodePair {
    std::wstring source;
    std::wstring target;
};

/// Of the item at that place; no two are the same.
[[nodiscard]] CodePair pairAt(std::size_t index);
/// Of no item, in neither direction.
[[nodiscard]] CodePair absentPair();

/// The name of the operation that the item at that place chooses.
[[nodiscard]] const wchar_t* nameAt(std::size_t index);

/// So many elements of about 150 characters, each with the name of an operation in the catalog.
[[nodiscard]] std::wstring configurationText(std::size_t items);

} // namespace Bench
