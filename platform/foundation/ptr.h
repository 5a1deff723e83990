// A smart pointer over reference-counted objects.
#pragma once

#include <utility>

/// Owns one reference. The constructor from a raw pointer takes over a reference and adds none.
template <class T>
class Ptr {
public:
    Ptr() = default;
    explicit Ptr(T* object) : object_(object) {}
    Ptr(const Ptr& other) : object_(other.object_)
    {
        if (object_ != nullptr)
            object_->AddRef();
    }
    Ptr(Ptr&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
    Ptr& operator=(Ptr other) noexcept
    {
        std::swap(object_, other.object_);
        return *this;
    }
    ~Ptr()
    {
        if (object_ != nullptr)
            object_->Release();
    }

    T* get() const { return object_; }
    T* operator->() const { return object_; }
    T& operator*() const { return *object_; }
    explicit operator bool() const { return object_ != nullptr; }
    /// Passes the reference to the caller.
    T* Detach() { return std::exchange(object_, nullptr); }

private:
    T* object_ = nullptr;
};
