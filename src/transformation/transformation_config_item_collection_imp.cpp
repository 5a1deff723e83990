#include "coordsys/orvel_transformation_config_item_collection.h"

#include <new>
#include <string_view>
#include <vector>

#include "storage/ignore_result.h"
#include "transformation/item_text.h"
#include "transformation/transformation_config_item_collection_imp.h"
#include "transformation/transformation_config_item_imp.h"

using namespace Orvel;

namespace Zentara::Gis::Orvel::CoordinateSystem {
namespace {

std::vector<Ptr<FqDisposable>> referenceItems(const Ptr<FqDisposableCollection>& items)
{
    std::vector<Ptr<FqDisposable>> references;
    const int count = items->GetCount();
    references.reserve(static_cast<std::size_t>(count));
    for (int index = 0; index < count; ++index)
        references.emplace_back(items->GetItem(index));
    return references;
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
    ignoreResult([&] { return items_->Clear(); });
}

void OrvelTransformationConfigItemCollectionImp::Dispose()
{
    delete this;
}

void OrvelTransformationConfigItemCollectionImp::Add(OrvelTransformationConfigItem* item)
{
    ignoreResult([&] { return items_->Add(item); });
}

void OrvelTransformationConfigItemCollectionImp::Clear()
{
    ignoreResult([&] { return items_->Clear(); });
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
    const int count = items_->GetCount();
    for (int index = 0; index < count; ++index) {
        const Ptr<FqDisposable> entry(items_->GetItem(index));
        auto* const item = dynamic_cast<OrvelTransformationConfigItem*>(entry.get());
        if (item == nullptr)
            return {};
        text += item->ToXmlString();
    }
    return text;
}

void OrvelTransformationConfigItemCollectionImp::FromXmlString(const wchar_t* text)
{
    const auto former = referenceItems(items_); // keeps them alive, because the text may be a field of one of them
    ignoreResult([&] { return items_->Clear(); });
    std::wstring_view remaining = text != nullptr ? text : L"";
    for (ItemText fields; takeItem(remaining, fields);) {
        const Ptr<OrvelTransformationConfigItemImp> item(new OrvelTransformationConfigItemImp);
        item->setFields(fields);
        ignoreResult([&] { return items_->Add(item.get()); });
    }
}

} // namespace Zentara::Gis::Orvel::CoordinateSystem
