// A second reader and writer of configuration texts, made from docs/formats/transformation-configuration.md alone:
// slow, obvious, and with nothing of the module's in it.
#pragma once

#include <string>
#include <vector>

#include "transformation/config_items.h"

namespace Tests::Reference {

void readItem(const std::wstring& text, ItemFields& item);
std::vector<ItemFields> readConfiguration(const std::wstring& text);
std::wstring writtenItem(const ItemFields& item);
std::wstring writtenConfiguration(const std::vector<ItemFields>& items);

} // namespace Tests::Reference
