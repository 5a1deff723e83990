#pragma once

#include <atomic>

// Objects that several parties hold. They count their holders themselves.
namespace Core {

/// The base of what is counted. A new object has one holder.
class Counted {
public:
    Counted(const Counted&) = delete;
    Counted& operator=(const Counted&) = delete;

    unsigned retain() noexcept { return ++m_holders; }

    /// Ends one hold; after the last one the object vanishes. Returns how many are left.
    unsigned drop() noexcept
    {
        const unsigned left = --m_holders;
        if (left == 0)
            vanish();
        return left;
    }

protected:
    Counted() = default;
    virtual ~Counted() = default;

private:
    virtual void vanish() { delete this; }

    std::atomic<unsigned> m_holders = 1;
};

} // namespace Core
