#include "platform/foundation/disposable_collection.h"

#include <utility>
#include <vector>

struct FqDisposableCollection::Items {
    std::vector<FqDisposable*> list;
};

FqDisposableCollection::FqDisposableCollection() : items_(new Items)
{
}

FqDisposableCollection::~FqDisposableCollection()
{
    FqDisposableCollection::Clear();
    delete items_;
}

int FqDisposableCollection::Add(FqDisposable* item)
{
    if (item == nullptr)
        return -1;
    items_->list.push_back(item);
    item->AddRef();
    return static_cast<int>(items_->list.size()) - 1;
}

void FqDisposableCollection::Clear()
{
    for (FqDisposable* item : std::exchange(items_->list, {}))
        item->Release();
}

int FqDisposableCollection::GetCount()
{
    return static_cast<int>(items_->list.size());
}

FqDisposable* FqDisposableCollection::GetItem(int index)
{
    if (index < 0 || index >= FqDisposableCollection::GetCount())
        return nullptr;
    FqDisposable* item = items_->list[static_cast<std::size_t>(index)];
    item->AddRef();
    return item;
}

void FqDisposableCollection::Dispose()
{
    delete this;
}
