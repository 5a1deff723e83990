#include "coordsys/orvel_transformation_config_item_collection.h"

#include <new>
#include <string_view>

#include "transformation/item_chunks.h"
#include "transformation/transformation_config_item_collection_imp.h"
#include "transformation/transformation_config_item_imp.h"

namespace Zentara::Gis::Orvel::CoordinateSystem {
namespace {

/// In order, each held while it is visited; false as soon as a visit is.
template <class Visit>
bool visitEach(FqDisposableCollection& items, const Visit& visit)
{
    const int count = items.GetCount();
    for (int index = 0; index < count; ++index) {
        const Ptr<FqDisposable> entry(items.GetItem(index));
        if (!visit(entry.get()))
            return false;
    }
    return true;
}

/// Without the items that are a client's own. A long text that has to grow takes three times its length for a while.
std::size_t longestText(FqDisposableCollection& items)
{
    std::size_t length = 0;
    static_cast<void>(visitEach(items, [&](FqDisposable* entry) { // which goes on to the end
        if (const auto* const item = dynamic_cast<OrvelTransformationConfigItemImp*>(entry))
            length += item->LongestXmlText();
        return true;
    }));
    return length;
}

/// False for what is no item.
bool appendItem(std::wstring& text, FqDisposable* entry)
{
    if (const auto* const item = dynamic_cast<OrvelTransformationConfigItemImp*>(entry)) {
        item->AppendXmlText(text);
        return true;
    }
    auto* const item = dynamic_cast<OrvelTransformationConfigItem*>(entry);
    if (item != nullptr)
        text += item->ToXmlString();
    return item != nullptr;
}

} // namespace

OrvelTransformationConfigItemCollection::OrvelTransformationConfigItemCollection() = default;
OrvelTransformationConfigItemCollection::~OrvelTransformationConfigItemCollection() = default;
ConfigItemCollectionStore::~ConfigItemCollectionStore() = default;

OrvelTransformationConfigItemCollection* OrvelTransformationConfigItemCollection::CreateInstance()
{
    try {
        return new OrvelTransformationConfigItemCollectionImp;
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

void OrvelTransformationConfigItemCollection::Dispose()
{
    delete this;
}

OrvelTransformationConfigItemCollectionImp::OrvelTransformationConfigItemCollectionImp()
    : items_(new ConfigItemCollectionStore)
{
}

OrvelTransformationConfigItemCollectionImp::~OrvelTransformationConfigItemCollectionImp()
{
    items_->Clear();
}

void OrvelTransformationConfigItemCollectionImp::Dispose()
{
    delete this;
}

void OrvelTransformationConfigItemCollectionImp::Add(OrvelTransformationConfigItem* item)
{
    items_->Add(item);
}

void OrvelTransformationConfigItemCollectionImp::Clear()
{
    items_->Clear();
}

int OrvelTransformationConfigItemCollectionImp::GetCount()
{
    return items_->GetCount();
}

FqDisposable* OrvelTransformationConfigItemCollectionImp::GetItem(int index)
{
    return items_->GetItem(index);
}

std::wstring OrvelTransformationConfigItemCollectionImp::ToXmlString()
{
    std::wstring text;
    text.reserve(longestText(*items_.get()));
    if (!visitEach(*items_.get(), [&](FqDisposable* entry) { return appendItem(text, entry); }))
        return {};
    return text;
}

void OrvelTransformationConfigItemCollectionImp::FromXmlString(const wchar_t* text)
{
    items_->Clear();
    std::wstring_view remaining = text != nullptr ? text : L"";
    while (const auto chunk = ::Orvel::TakeItemChunk(remaining)) {
        const Ptr<OrvelTransformationConfigItemImp> item(new OrvelTransformationConfigItemImp);
        item->FromXmlText(*chunk);
        items_->Add(item.get());
    }
}

} // namespace Zentara::Gis::Orvel::CoordinateSystem
