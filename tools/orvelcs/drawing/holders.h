// Holders for what the host and the spatial-reference library hand out. A holder releases what it owns when its scope
// ends.
#pragma once

#include <optional>
#include <string>
#include <utility>

#include "platform/host.h"
#include "platform/spatial_reference.h"

namespace Orvelcs {

/// Owns a pointer. `Release` says how it is given back and does not throw.
template <class T, class Release>
class Holder {
public:
    Holder() = default;
    explicit Holder(T* object) : object_(object) {}
    Holder(Holder&& other) noexcept : object_(other.release()) {}
    Holder& operator=(Holder&& other) noexcept
    {
        reset(other.release());
        return *this;
    }
    Holder(const Holder&) = delete;
    Holder& operator=(const Holder&) = delete;
    ~Holder() { reset(); }

    T* get() const { return object_; }
    T* operator->() const { return object_; }
    T& operator*() const { return *object_; }
    explicit operator bool() const { return object_ != nullptr; }

    [[nodiscard]] T* release() { return std::exchange(object_, nullptr); }
    void reset(T* object = nullptr)
    {
        if (T* former = std::exchange(object_, object); former != nullptr)
            Release()(former);
    }
    /// Releases what is held and returns the place for a new object, for a call's out-parameter.
    [[nodiscard]] T*& put()
    {
        reset();
        return object_;
    }

private:
    T* object_ = nullptr;
};

struct DestroyLibraryObject {
    void operator()(Zentara::Infrastructure::SpatialReference::Object* object) const
    {
        Zentara::Infrastructure::SpatialReference::Object::Destroy(object);
    }
};
template <class T>
using LibraryObject = Holder<T, DestroyLibraryObject>;
using SystemHolder = LibraryObject<Zentara::Infrastructure::SpatialReference::CoordinateReferenceSystemDefinition>;

struct ReleaseResbufs {
    void operator()(resbuf* chain) const { qeutRelRb(chain); }
};
using ResbufList = Holder<resbuf, ReleaseResbufs>;

struct DeleteHostBuffer {
    template <class Element>
    void operator()(Element* buffer) const
    {
        qeutDelBuffer(buffer);
    }
};
using HostString = Holder<wchar_t, DeleteHostBuffer>;
using HostBytes = Holder<unsigned char, DeleteHostBuffer>;

/// Closes an object of a drawing, and deletes one that was added to no drawing.
struct CloseHostObject {
    template <class T>
    void operator()(T* object) const
    {
        if (object->objectId().isNull())
            delete object;
        else
            static_cast<void>(object->close()); // an object that is open can be closed
    }
};

template <class T>
class HostObject : public Holder<T, CloseHostObject> {
public:
    using Holder<T, CloseHostObject>::Holder;

    [[nodiscard]] Qeapp::ErrorStatus open(QeDbObjectId id, QeDb::OpenMode mode)
    {
        const Qeapp::ErrorStatus result = qedbOpenObject(this->put(), id, mode);
        return result == Qeapp::eOk && !*this ? Qeapp::eNoObject : result;
    }
};

/// Copies the text that a function of the module hands out in a host buffer; nothing when `read` returns false.
template <class Read>
std::optional<std::wstring> copyModuleText(const Read& read)
{
    wchar_t* text = nullptr;
    if (!read(text))
        return std::nullopt;
    const HostString owned(text);
    return text;
}

} // namespace Orvelcs
