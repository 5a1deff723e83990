#include "foundation.h"

FqGuardDisposable::FqGuardDisposable() = default;
FqGuardDisposable::~FqGuardDisposable() = default;

int FqGuardDisposable::AddRef()
{
    return static_cast<int>(retain());
}

int FqGuardDisposable::Release()
{
    return static_cast<int>(drop());
}

void FqGuardDisposable::vanish()
{
    Dispose();
}

FqDisposableCollection::FqDisposableCollection() = default;

FqDisposableCollection::~FqDisposableCollection()
{
    FqDisposableCollection::Clear();
}

int FqDisposableCollection::Add(FqDisposable* item)
{
    m_items.push_back(item);
    item->AddRef();
    return GetCount() - 1;
}

void FqDisposableCollection::Clear()
{
    // An item's end may look at the collection, which is empty by then.
    std::vector<FqDisposable*> items;
    items.swap(m_items);
    for (FqDisposable* const item : items)
        item->Release();
}

int FqDisposableCollection::GetCount()
{
    return static_cast<int>(m_items.size());
}

FqDisposable* FqDisposableCollection::GetItem(int index)
{
    if (index < 0 || index >= GetCount())
        return nullptr;
    FqDisposable* const item = m_items[static_cast<std::size_t>(index)];
    item->AddRef();
    return item;
}

void FqDisposableCollection::Dispose()
{
    delete this;
}
