// What the module needs of a foundation library: reference-counted objects and a collection of them. Copy this header
// and fill it. A comment with three slashes says what the module expects; F1, F2 … are promises of docs/porting.md.
#pragma once

#include "core/counted.h"
#include "core/trial.h"

#include <vector>

#if !defined(_WIN32)
#pragma GCC visibility push(default)
#endif

/// An object with a reference count, polymorphic. It may have more bases and virtual functions: those of the library
/// come first in the classes that the module hands to its clients.
class FqDisposable {
public:
    /// Adds a reference (F2). `Ptr` and clients of the module call it. No source of the module names it.
    virtual int AddRef() = 0;
    /// Gives a reference back (F2). `Ptr` and clients of the module call it. No source of the module names it.
    virtual int Release() = 0;

protected:
    /// Virtual; protected or public. The module's classes override it.
    virtual ~FqDisposable() = default;
    /// Destroys the object; protected or public. The module's classes override it.
    virtual void Dispose() = 0;
};

/// An object with a count of its own (F1). The module's classes derive from it and make it with the default
/// constructor.
class FqGuardDisposable : public FqDisposable, private Core::Counted {
public:
    int AddRef() override;
    int Release() override;

protected:
    /// The count is 1.
    FqGuardDisposable();
    ~FqGuardDisposable() override;

private:
    void vanish() override;

    Core::Living m_living{"disposables"};
};

/// A list that holds references. The module derives a class from it that adds nothing and makes it with plain `new`, so
/// that no function is left abstract.
class FqDisposableCollection : public FqGuardDisposable {
public:
    /// Appends the item (F3). The result is not looked at.
    virtual int Add(FqDisposable* item);
    /// Releases every item (F5). The result is not looked at.
    virtual void Clear();
    /// The number of items.
    virtual int GetCount();
    /// The item at the index, from 0 (F4). Null out of range.
    virtual FqDisposable* GetItem(int index);

protected:
    /// The list is empty.
    FqDisposableCollection();
    /// Releases every item (F5).
    ~FqDisposableCollection() override;
    void Dispose() override;

private:
    std::vector<FqDisposable*> m_items;
};

/// Owns one reference (F6).
template <class T>
class Ptr {
public:
    /// Takes over a reference, and adds none.
    explicit Ptr(T* object) : m_object(object) {}
    /// It can be copied or moved, as an element of a `std::vector`. A copy adds a reference.
    Ptr(const Ptr& other) : m_object(other.m_object)
    {
        if (m_object)
            m_object->AddRef();
    }
    Ptr& operator=(const Ptr&) = delete;
    /// Gives the reference back with `Release`.
    ~Ptr()
    {
        if (m_object)
            m_object->Release();
    }
    /// The object, or null.
    T* get() const { return m_object; }
    /// The object.
    T* operator->() const { return m_object; }

private:
    T* m_object;
};

#if !defined(_WIN32)
#pragma GCC visibility pop
#endif
