// A second implementation of reading and writing configuration texts. It is slow and plain, follows
// docs/formats/transformation-configuration.md alone, and uses nothing of the module.
#pragma once

#include <string>
#include <vector>

#include "transformation/config_items.h"

namespace Tests::Reference {

void readItem(const std::wstring& text, ItemFields& item);
std::vector<ItemFields> readConfiguration(const std::wstring& text);
std::wstring writeItem(const ItemFields& item);
std::wstring writeConfiguration(const std::vector<ItemFields>& items);

} // namespace Tests::Reference
