// The ways in which a sweep makes a call fail.
#pragma once

#include <array>
#include <cstddef>
#include <string>

namespace Tests {

enum class FaultKind {
    once,           // the n-th fallible call of the platform
    fromThenOn,     // the n-th and every later one
    throwing,       // the n-th, with std::bad_alloc instead of a result
    allocation,     // the n-th allocation by the module's own code
    hostAllocation, // the n-th allocation by the host's
    notice,         // the n-th notice to a reactor, which throws
    pair            // the i-th fallible call, and then the j-th of that run
};

inline constexpr std::array kFaultKinds{FaultKind::once,       FaultKind::fromThenOn,     FaultKind::throwing,
                                        FaultKind::allocation, FaultKind::hostAllocation, FaultKind::notice,
                                        FaultKind::pair};

inline const char* nameOf(FaultKind kind)
{
    constexpr std::array kNames{"once", "fromThenOn", "throwing", "allocation", "hostAllocation", "notice", "pair"};
    return kNames[static_cast<std::size_t>(kind)];
}

/// Where a failure is put: n, or i and j.
struct FaultPlace {
    std::size_t first = 0;
    std::size_t second = 0; // of a pair alone
};

inline std::string textOf(const FaultPlace& place)
{
    const std::string first = std::to_string(place.first);
    return place.second == 0 ? first : first + "," + std::to_string(place.second);
}

} // namespace Tests
