#pragma once

#include <atomic>
#include <utility>

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

/// Takes over one hold of an object and drops it at its end.
template <class T>
class Held {
public:
    Held() = default;
    explicit Held(T* object) : m_object(object) {}
    Held(Held&& other) noexcept : m_object(std::exchange(other.m_object, nullptr)) {}
    Held(const Held& other) : m_object(other.m_object)
    {
        if (m_object)
            m_object->retain();
    }
    Held& operator=(Held other) noexcept
    {
        std::swap(m_object, other.m_object);
        return *this;
    }
    ~Held()
    {
        if (m_object)
            m_object->drop();
    }

    T* get() const { return m_object; }
    T* operator->() const { return m_object; }

private:
    T* m_object = nullptr;
};

} // namespace Core
