// Configuration items and collections for tests.
#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "coordsys/orvel_transformation_config_item_collection.h"

namespace Tests {

namespace Cs = Zentara::Gis::Orvel::CoordinateSystem;

using ConfigItem = Cs::OrvelTransformationConfigItem;
using ConfigCollection = Cs::OrvelTransformationConfigItemCollection;

/// The fields of an item as values, by default those of a new item.
struct ItemFields {
    std::wstring source{};
    std::wstring target{};
    std::wstring name{};
    int type = 0;
    std::wstring note{};
    std::wstring version = L"1.0";

    friend bool operator==(const ItemFields&, const ItemFields&) = default;
};

/// Writes the fields in this order with "|" between them.
std::string formatFields(const ItemFields& fields);
std::ostream& operator<<(std::ostream& stream, const ItemFields& fields);

ItemFields readFields(ConfigItem& item);
void setFields(ConfigItem& item, const ItemFields& fields);
Ptr<ConfigItem> newItem(const ItemFields& fields = {});
/// A complete item with that name.
Ptr<ConfigItem> newCompleteItem(const wchar_t* name = L"c");

Ptr<ConfigCollection> newCollection();
/// Null for an index out of range.
Ptr<ConfigItem> itemAt(ConfigCollection& collection, int index);
std::vector<ItemFields> readFields(ConfigCollection& collection);

} // namespace Tests
