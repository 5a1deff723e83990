// Lists the platform calls of an operation, so that a test can make each of them fail.
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

/// Runs the operation and returns the names of the fallible platform calls that it makes, in order.
template <class Operation>
std::vector<std::string> recordCalls(const Operation& operation)
{
    Embedded::FaultInjection::watch();
    operation();
    Embedded::FaultInjection::disarm();
    return Embedded::FaultInjection::seen();
}

/// The same with the occurrence of each call.
template <class Operation>
std::vector<FallibleCall> recordFallibleCalls(const Operation& operation)
{
    std::map<std::string, std::size_t> occurrences;
    std::vector<FallibleCall> calls;
    for (const std::string& name : recordCalls(operation))
        calls.push_back({name, ++occurrences[name]});
    return calls;
}

/// A result that no platform call returns by itself.
inline constexpr int kInjectedResult = 77;

inline Embedded::FaultPlan failing(const FallibleCall& call, int code = kInjectedResult)
{
    return {.call = call.name, .occurrence = call.occurrence, .fromThenOn = false, .code = code};
}

/// Plans the failure of the first call of that name.
inline Embedded::FaultPlan failing(const std::string& name, int code = kInjectedResult)
{
    return failing(FallibleCall{name, 1}, code);
}

/// Whether the failure of the call changes no result, because the operation ignores it.
inline bool failureChangesNoResult(const FallibleCall& call)
{
    return call.name == "QeDbObject::close" || call.name == "QeApDocManager::unlockDocument";
}

} // namespace Tests
