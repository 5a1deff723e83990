// How one call of an exported function ended.
#pragma once

#include <ostream>

namespace Tests {

struct Outcome {
    enum class Kind { returned, badAlloc, reactorException, otherException };

    Kind kind = Kind::otherException;
    int result = -1; // of a call that returned; a bool or a pointer becomes kTrue or kFalse

    bool returned() const { return kind == Kind::returned; }
    friend bool operator==(const Outcome&, const Outcome&) = default;
};

/// The results of functions that return no code.
inline constexpr int kTrue = 0;
inline constexpr int kFalse = 1;

inline constexpr int asResult(bool value)
{
    return value ? kTrue : kFalse;
}

inline Outcome returning(int result)
{
    return {Outcome::Kind::returned, result};
}

inline std::ostream& operator<<(std::ostream& out, const Outcome& outcome)
{
    constexpr const char* kNames[] = {"result ", "std::bad_alloc", "the reactor's exception", "another exception"};
    out << kNames[static_cast<int>(outcome.kind)];
    return outcome.returned() ? out << outcome.result : out;
}

} // namespace Tests
