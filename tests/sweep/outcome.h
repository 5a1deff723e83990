// How one call of an exported function ended.
#pragma once

#include <ostream>

namespace Tests {

struct Outcome {
    enum class Way { returned, outOfMemory, refusedByReactor, otherwise };

    Way way = Way::otherwise;
    int result = -1; // of a call that returned; for a bool or a pointer kYes or kNo

    bool returned() const { return way == Way::returned; }
    friend bool operator==(const Outcome&, const Outcome&) = default;
};

/// The results of functions that have no codes.
inline constexpr int kYes = 0;
inline constexpr int kNo = 1;

inline constexpr int resultOf(bool answer)
{
    return answer ? kYes : kNo;
}

inline Outcome returning(int result)
{
    return {Outcome::Way::returned, result};
}

inline std::ostream& operator<<(std::ostream& out, const Outcome& outcome)
{
    constexpr const char* kWays[] = {"result ", "std::bad_alloc", "the reactor's exception", "another exception"};
    out << kWays[static_cast<int>(outcome.way)];
    return outcome.returned() ? out << outcome.result : out;
}

} // namespace Tests
