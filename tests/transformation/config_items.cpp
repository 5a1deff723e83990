#include "transformation/config_items.h"

#include "embedded/base/text.h"

namespace Tests {

std::string formatFields(const ItemFields& fields)
{
    return Embedded::utf8FromWide(fields.source + L'|' + fields.target + L'|' + fields.name + L'|' +
                                  std::to_wstring(fields.type) + L'|' + fields.note + L'|' + fields.version);
}

std::ostream& operator<<(std::ostream& stream, const ItemFields& fields)
{
    return stream << formatFields(fields);
}

ItemFields readFields(ConfigItem& item)
{
    return {item.GetSourceCs(), item.GetTargetCs(), item.GetName(), item.GetType(), item.GetNote(), item.GetVersion()};
}

void setFields(ConfigItem& item, const ItemFields& fields)
{
    item.SetSourceCs(fields.source.c_str());
    item.SetTargetCs(fields.target.c_str());
    item.SetName(fields.name.c_str());
    item.SetType(fields.type);
    item.SetNote(fields.note.c_str());
    item.SetVersion(fields.version.c_str());
}

Ptr<ConfigItem> newItem(const ItemFields& fields)
{
    Ptr<ConfigItem> item(ConfigItem::CreateInstance());
    setFields(*item, fields);
    return item;
}

Ptr<ConfigItem> newCompleteItem(const wchar_t* name)
{
    return newItem({.source = L"a", .target = L"b", .name = name, .type = 1, .note = L"d"});
}

Ptr<ConfigCollection> newCollection()
{
    return Ptr<ConfigCollection>(ConfigCollection::CreateInstance());
}

Ptr<ConfigItem> itemAt(ConfigCollection& collection, int index)
{
    const Ptr<FqDisposable> entry(collection.GetItem(index));
    auto* const item = dynamic_cast<ConfigItem*>(entry.get());
    if (item != nullptr)
        item->AddRef();
    return Ptr<ConfigItem>(item);
}

std::vector<ItemFields> readFields(ConfigCollection& collection)
{
    std::vector<ItemFields> items;
    for (int index = 0; index < collection.GetCount(); ++index)
        items.push_back(readFields(*itemAt(collection, index)));
    return items;
}

} // namespace Tests
