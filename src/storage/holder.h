// Scope-bound ownership: one holder, a small policy for each kind of thing that the platform hands out.
#pragma once

#include <utility>

namespace Orvel {

/// Owns a pointer for the length of a scope. A policy names the pointer type (`Handle`) and says how it is given back
/// (`dispose`, which does not throw).
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

    /// Gives the ownership away.
    [[nodiscard]] Handle release() { return std::exchange(handle_, nullptr); }
    void reset(Handle handle = nullptr)
    {
        if (Handle former = std::exchange(handle_, handle); former != nullptr)
            Policy::dispose(former);
    }
    /// Lets go of what is held and hands out the place for a new one, for a call's out-parameter.
    [[nodiscard]] Handle& put()
    {
        reset();
        return handle_;
    }

private:
    Handle handle_ = nullptr;
};

} // namespace Orvel
