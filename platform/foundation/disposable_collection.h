// A list of reference-counted objects.
#pragma once

#include "disposable.h"

/// Holds a reference to each of its items. Derive from it a class that can be instantiated.
class FQCORE_API FqDisposableCollection : public FqGuardDisposable {
public:
    /// Appends the item and adds a reference. Returns its index, or -1 for null.
    virtual int Add(FqDisposable* item);
    /// Releases every item.
    virtual void Clear();
    virtual int GetCount();
    /// The item, with a reference added that the caller releases. Null out of range.
    virtual FqDisposable* GetItem(int index);

protected:
    FqDisposableCollection();
    /// Clears the list.
    ~FqDisposableCollection() override;
    void Dispose() override;

private:
    struct Items;
    Items* items_;
};
