// Reference-counted objects.
#pragma once

#include "../export.h"

#if defined(_WIN32)
#undef GetClassName // a macro of the system that would rename the operation below
#endif

/// The root of the library: an object that knows its class. The texts are literals and valid as long as the program
/// runs.
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
    /// Releases a reference. The release of the last one disposes the object.
    virtual int Release() = 0;
    /// Returns whether the release of the last reference disposes the object, as it does by default. With the flag off
    /// the code that made the object destroys it.
    virtual void SetRefCountFlag(bool disposesItself) = 0;

protected:
    FqDisposable() = default;
    ~FqDisposable() override;
    virtual void Dispose() = 0;
};

/// The reference count. It starts at 1, for the code that makes the object.
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
