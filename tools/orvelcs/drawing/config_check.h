// Refuses items of a transformation configuration that can never work.
#pragma once

#include <string>
#include <vector>

#include "orvelcs/drawing/config_item.h"

namespace Orvelcs {

/// What is refused, for the help of commands.
inline constexpr const char* kItemRefusals =
    "What can never work is refused, and the message says why: a code or a name that the catalog does not have, a "
    "name that several operations have, an operation that does not lead from the source to the target, in reverse if "
    "it is reversible, and a second item of the same source and target, which the module would never use. A grid that "
    "is not installed does not matter. With --force the item is stored without being checked against the catalog.";

/// The item with its codes and its name as the catalog spells them. Throws Failure, with the way out, for a code or a
/// name that the catalog does not have, for a name that it has several times, and for an operation that does not lead
/// from the source to the target.
ConfigItem checkedItem(const ConfigItem& item);
ConfigItemText checkedItem(const ConfigItemText& item);

/// Throws Failure when an item of the text has the source and the target of the other.
void checkPairIsNew(const std::vector<ConfigItem>& items, const ConfigItem& item);

/// The text with checkedItem() of each complete item. Throws Failure as above, and for two items of one pair. An
/// item without codes or a name is left alone, since the module ignores it.
std::wstring checkedText(const std::wstring& text);

} // namespace Orvelcs
