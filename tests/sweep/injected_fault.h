// The failures that the sweep injects into a call.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>

namespace Tests {

enum class FaultKind {
    once,           // the n-th fallible call of the platform fails
    fromThenOn,     // the n-th and every later one fail
    throwing,       // the n-th throws std::bad_alloc
    allocation,     // the n-th allocation by the module's own code fails
    hostAllocation, // the n-th allocation by the host fails
    notice,         // the n-th notice to a reactor throws
    pair            // the i-th fallible call fails, and then the j-th of that run
};

inline constexpr std::array kFaultKinds{FaultKind::once,       FaultKind::fromThenOn,     FaultKind::throwing,
                                        FaultKind::allocation, FaultKind::hostAllocation, FaultKind::notice,
                                        FaultKind::pair};

inline const char* faultKindName(FaultKind kind)
{
    constexpr std::array kNames{"once", "fromThenOn", "throwing", "allocation", "hostAllocation", "notice", "pair"};
    return kNames[static_cast<std::size_t>(kind)];
}

/// Whether the fault makes calls of the platform fail, and not allocations or notices.
inline bool failsCalls(FaultKind kind)
{
    return kind != FaultKind::allocation && kind != FaultKind::hostAllocation && kind != FaultKind::notice;
}

/// The numbers n, or i and j, counted from 1. Number 0 makes nothing fail.
struct FaultPlace {
    std::size_t first = 0;
    std::size_t second = 0; // used by pairs only
};

inline std::string formatPlace(const FaultPlace& place)
{
    const std::string first = std::to_string(place.first);
    return place.second == 0 ? first : first + "," + std::to_string(place.second);
}

struct InjectedFault {
    FaultKind kind = FaultKind::once;
    FaultPlace place{};
    std::optional<int> code{}; // the result that the call returns instead of its usual failure
};

} // namespace Tests
