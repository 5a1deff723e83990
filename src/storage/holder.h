// Scope-bound ownership: one holder, and a small policy for each kind of object that the platform returns.
#pragma once

#include <utility>

namespace Orvel {

/// Owns a pointer for the length of a scope. A policy names the pointer type (`Handle`) and releases the object
/// (`dispose`, which does not throw). Nothing can be done about a release that fails, so its result is ignored.
template <class Policy>
class Holder {
public:
    using Handle = typename Policy::Handle;

    Holder() = default;
    explicit Holder(Handle handle) : handle_(handle) {}
    Holder(Holder&& other) noexcept : handle_(other.release()) {}
    Holder& operator=(Holder&& other) noexcept
    {
        reset(other.release());
        return *this;
    }
    Holder(const Holder&) = delete;
    Holder& operator=(const Holder&) = delete;
    ~Holder() { reset(); }

    [[nodiscard]] Handle get() const { return handle_; }
    Handle operator->() const { return handle_; }
    explicit operator bool() const { return handle_ != nullptr; }

    /// Passes the ownership to the caller.
    [[nodiscard]] Handle release() { return std::exchange(handle_, nullptr); }
    void reset(Handle handle = nullptr)
    {
        if (Handle former = std::exchange(handle_, handle); former != nullptr)
            Policy::dispose(former);
    }
    /// Releases what is held and returns the pointer itself, to be filled by a call's out-parameter.
    [[nodiscard]] Handle& put()
    {
        reset();
        return handle_;
    }

private:
    Handle handle_ = nullptr;
};

} // namespace Orvel
