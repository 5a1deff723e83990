// Reference-counted objects.
#pragma once

#include "../export.h"

#if defined(_WIN32)
#undef GetClassName // a macro of the system's that would rename the class's own operation
#endif

/// The root: an object that can say what class it is. The texts are literals of the class and live as long as the
/// program.
class FQCORE_API FqObject {
public:
    virtual int GetClassId();
    virtual const wchar_t* GetClassName();
    virtual const char* GetMultiByteClassName();
    virtual const wchar_t* GetNameSpace();

protected:
    FqObject() = default;
    virtual ~FqObject();
};

/// An object with a reference count.
class FQCORE_API FqDisposable : public FqObject {
public:
    virtual int GetRefCount() = 0;
    virtual int AddRef() = 0;
    /// Drops a reference; with the last one the object is disposed.
    virtual int Release() = 0;
    /// Whether the last reference disposes the object, as it does at the start. With the flag off its maker destroys
    /// it.
    virtual void SetRefCountFlag(bool disposesItself) = 0;

protected:
    FqDisposable() = default;
    ~FqDisposable() override;
    virtual void Dispose() = 0;
};

/// The count itself: 1 at the start, for the maker.
class FQCORE_API FqGuardDisposable : public FqDisposable {
public:
    int GetRefCount() override;
    int AddRef() override;
    int Release() override;
    void SetRefCountFlag(bool disposesItself) override;

protected:
    FqGuardDisposable();
    FqGuardDisposable(const FqGuardDisposable&) = delete;
    FqGuardDisposable& operator=(const FqGuardDisposable&) = delete;
    ~FqGuardDisposable() override;

private:
    int references_ = 1;
    bool disposesItself_ = true;
};
