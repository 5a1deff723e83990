// The failure paths of an operation: lists its platform calls, and makes each of them fail.
#pragma once

#include <map>
#include <ostream>
#include <string>
#include <vector>

#include "embedded/diagnostics/fault_injection.h"

namespace Tests {

/// One call of an operation: the n-th of that name.
struct FallibleCall {
    std::string name;
    std::size_t occurrence = 1;
};

inline std::ostream& operator<<(std::ostream& out, const FallibleCall& call)
{
    return out << call.name << " no. " << call.occurrence;
}

/// The fallible platform calls that the operation makes, in order.
template <class Operation>
std::vector<FallibleCall> fallibleCallsOf(const Operation& operation)
{
    Embedded::FaultInjection::watch();
    operation();
    Embedded::FaultInjection::disarm();
    std::map<std::string, std::size_t> occurrences;
    std::vector<FallibleCall> calls;
    for (const std::string& name : Embedded::FaultInjection::seen())
        calls.push_back({name, ++occurrences[name]});
    return calls;
}

/// A result that no platform call returns by itself, so that a test recognises it.
inline constexpr int kPlanned = 77;

inline Embedded::FaultPlan failing(const FallibleCall& call, int code = kPlanned)
{
    return {.call = call.name, .occurrence = call.occurrence, .fromThenOn = false, .code = code};
}

/// The plan for the first call of a name.
inline Embedded::FaultPlan failing(const std::string& name, int code = kPlanned)
{
    return failing(FallibleCall{name, 1}, code);
}

/// A call whose failure changes no result, because it comes after the last decision.
inline bool isPassedOver(const FallibleCall& call)
{
    return call.name == "QeDbObject::close" || call.name == "QeApDocManager::unlockDocument";
}

} // namespace Tests
