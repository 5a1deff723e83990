// A foundation library of other names, as loose as docs/porting.md allows.
#pragma once

#include "windows_macros.h"

namespace Product {

class Root {
public:
    virtual int classNumber(bool full = false);
    virtual const wchar_t* className();

protected:
    Root() = default;
    virtual ~Root();
};

class Releasable : public Root {
public:
    virtual unsigned long AddRef() noexcept = 0;
    virtual unsigned long Release() noexcept = 0;
    virtual void Dispose() = 0;
    virtual ~Releasable();
};

class Guarded : public Releasable {
public:
    explicit Guarded(unsigned long references = 1) : references_(references) {}
    Guarded(const Guarded&) = default;
    Guarded& operator=(const Guarded&) = default;
    unsigned long AddRef() noexcept override;
    unsigned long Release() noexcept override;
    virtual const wchar_t* GetName(int language);

private:
    unsigned long references_;
};

class List : public Guarded {
public:
    explicit List(std::size_t capacity = 16);
    void Dispose() override;
    virtual void Add(Releasable* item, bool isShared = true);
    [[nodiscard]] virtual Releasable* Clear(bool keepsMemory = false);
    virtual short GetCount();
    virtual Releasable* GetItem(long index);
    Releasable* GetItem(const wchar_t* name);

private:
    std::vector<Releasable*> items_;
};

template <class T>
struct ReleasePolicy {
    static void release(T* object) { object->Release(); }
};

/// Copied, assigned, compared and converted to a pointer.
template <class T, class Policy = ReleasePolicy<T>>
class Reference {
public:
    Reference(T* object = nullptr, bool adds = false) : object_(object)
    {
        if (adds)
            object_->AddRef();
    }
    Reference(const Reference& other) : Reference(other.object_, other.object_ != nullptr) {}
    Reference& operator=(const Reference& other)
    {
        Reference copy(other);
        std::swap(object_, copy.object_);
        return *this;
    }
    virtual ~Reference()
    {
        if (object_ != nullptr)
            Policy::release(object_);
    }
    T* get() const { return object_; }
    T* operator->() const { return object_; }
    operator T*() const { return object_; }

private:
    T* object_;
};

} // namespace Product

using FqDisposable = Product::Releasable;
using FqGuardDisposable = Product::Guarded;
using FqDisposableCollection = Product::List;
template <class T>
using Ptr = Product::Reference<T>;
