// Where the items of a transformation configuration stand in its text.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "orvelcs/drawing/config_item.h"

namespace Orvelcs {

/// An item as the module reads it, and the part of the text from its "<Item>" to its "</Item>".
struct PlacedItem {
    ConfigItem item;
    std::size_t begin = 0;
    std::size_t length = 0;
};

/// Every item in order. One that does not begin so begins where the item before it ends.
std::vector<PlacedItem> placedItems(const std::wstring& text);

/// Returns whether the item leads from the source to the target, ignoring case.
bool isPair(const ConfigItem& item, const std::wstring& source, const std::wstring& target);

/// Removes the items of the pair from the text. The rest stays as it is.
std::wstring withoutPair(const std::wstring& text, const std::wstring& source, const std::wstring& target);

/// The element of an item with the codes and the name of another one.
std::wstring withFields(std::wstring element, const ConfigItem& item, const ConfigItem& changed);

} // namespace Orvelcs
