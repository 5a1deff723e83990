// Makes chosen calls of the platform fail, so that tests reach a client's failure paths.
//
// Every call of the host, of the spatial-reference library and of the Win32 stand-in that can fail first asks
// `injectedFailure`, giving its name, such as "QeDbDictionary::setAt". So do the host's allocators. A sweep counts the
// calls of an operation and then makes them fail one after another.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/export.h"

namespace Embedded {

/// Which calls fail, and how.
struct FaultPlan {
    std::string call;           // the name of the calls that match; empty: all calls match
    std::size_t occurrence = 1; // the first matching call that fails, counted from 1
    bool fromThenOn = false;    // all matching calls after it fail too
    std::optional<int> code{};  // the result of the failing call; without it the call chooses
    std::size_t second = 0;     // another matching call that fails, counted from 1; 0: none
    bool throws = false;        // throw std::bad_alloc instead; only for calls that may throw
    std::size_t limit = 0;      // throw std::runtime_error after this many calls, against endless loops; 0: no limit
};

class FQCORE_API FaultInjection {
public:
    /// Replaces the plan and starts counting from zero.
    static void arm(FaultPlan plan);
    /// Makes no call fail any more. `seen` keeps the names.
    static void disarm();
    /// Makes no call fail, but records the names of the calls that can. Each first calls `observer`, whose exceptions
    /// leave the call.
    static void watch(std::function<void(std::string_view call)> observer = {});
    /// The names of the calls since the last `arm` or `watch`, in order.
    static const std::vector<std::string>& seen();
    /// How many of these calls failed.
    static std::size_t failedCalls();

    /// For the platform: the code that this call must fail with, or nothing. It is `failure` unless the plan has a
    /// code.
    static std::optional<int> injectedFailure(std::string_view call, int failure)
    {
        return listening_ ? decide(call, failure) : std::nullopt;
    }

private:
    static std::optional<int> decide(std::string_view call, int failure);
    static bool listening_;
};

/// Arms a plan until the end of a scope.
class ScopedFault {
public:
    explicit ScopedFault(FaultPlan plan) { FaultInjection::arm(std::move(plan)); }
    ~ScopedFault() { FaultInjection::disarm(); }
    ScopedFault(const ScopedFault&) = delete;
    ScopedFault& operator=(const ScopedFault&) = delete;
};

} // namespace Embedded
