// A foundation library that counts no references and keeps no lists. It is sufficient to link the module.
#include "platform/foundation.h"

FqDisposable::~FqDisposable() = default;
FqGuardDisposable::~FqGuardDisposable() = default;
FqDisposableCollection::~FqDisposableCollection() = default;
FqGuardDisposable::FqGuardDisposable() = default;
FqDisposableCollection::FqDisposableCollection() = default;

int FqGuardDisposable::AddRef()
{
    return 1;
}
int FqGuardDisposable::Release()
{
    return 1;
}

void FqDisposableCollection::Dispose()
{
    delete this;
}
int FqDisposableCollection::Add(FqDisposable*)
{
    return -1;
}
void FqDisposableCollection::Clear()
{
}
int FqDisposableCollection::GetCount()
{
    return 0;
}
FqDisposable* FqDisposableCollection::GetItem(int)
{
    return nullptr;
}
