#pragma once

#include <cstddef>
#include <string>

// The product's own test mode: it counts what is alive, and makes a call fail on demand.
namespace Core {

/// Makes the n-th fallible call from now on fail, once; 0 lets every call work.
void failCall(std::size_t n);

/// What was called since the last `failCall`.
struct Trial {
    std::size_t calls = 0;
    std::string failed; ///< the call that failed, or empty
};
Trial trial();

/// Asked by every call of the product that can fail: whether it is to fail now. The name is the caller's.
bool failsNow(const char* call = __builtin_FUNCTION());

/// Counts one thing of a kind as alive, for as long as it lives itself.
class Living {
public:
    explicit Living(const char* kind) : m_kind(kind) { count(kind, 1); }
    Living(const Living& other) : Living(other.m_kind) {}
    Living& operator=(const Living&) { return *this; }
    ~Living() { count(m_kind, -1); }

    static void count(const char* kind, int change);
    /// What is alive, by kind.
    static std::string list();

private:
    const char* m_kind;
};

} // namespace Core
