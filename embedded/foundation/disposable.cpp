#include "platform/foundation/disposable.h"

#include <new>

#include "embedded/diagnostics/fault_injection.h"
#include "embedded/diagnostics/resource_counters.h"

int FqObject::GetClassId()
{
    return 0;
}

const wchar_t* FqObject::GetClassName()
{
    return L"FqObject";
}

const char* FqObject::GetMultiByteClassName()
{
    return "FqObject";
}

const wchar_t* FqObject::GetNameSpace()
{
    return L"";
}

FqObject::~FqObject() = default;

FqDisposable::~FqDisposable() = default;

// An object is always allocated with its count, so that this is where its allocation can be made to fail.
FqGuardDisposable::FqGuardDisposable()
{
    if (Embedded::FaultInjection::injectedFailure("FqGuardDisposable::FqGuardDisposable", 0))
        throw std::bad_alloc();
    Embedded::ResourceCounters::add(Embedded::ResourceKind::disposableObject);
}

FqGuardDisposable::~FqGuardDisposable()
{
    Embedded::ResourceCounters::remove(Embedded::ResourceKind::disposableObject);
}

int FqGuardDisposable::GetRefCount()
{
    return references_;
}

int FqGuardDisposable::AddRef()
{
    return ++references_;
}

int FqGuardDisposable::Release()
{
    const int left = --references_;
    if (left == 0 && disposesItself_)
        Dispose();
    return left;
}

void FqGuardDisposable::SetRefCountFlag(bool disposesItself)
{
    disposesItself_ = disposesItself;
}
