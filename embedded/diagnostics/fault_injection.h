// Makes chosen platform calls fail, so that a client's failure paths can be walked.
//
// Every fallible call of the host, of the spatial-reference library and of the Win32 stand-in, the host's allocators
// among them, begins with a strike that names it, "QeDbDictionary::setAt" for instance. A sweep counts the calls
// of an operation and then fails them one after another.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/export.h"

namespace Embedded {

/// Which calls are to fail, and how.
struct FaultPlan {
    std::string call;           // empty: any call
    std::size_t occurrence = 1; // the first to fail, counted from 1 among those that match
    bool fromThenOn = false;    // every later one too
    std::optional<int> code{};  // the result to fail with; otherwise the call's own choice
    std::size_t second = 0;     // one more to fail, counted likewise; 0: none
    bool throws = false;        // with std::bad_alloc; only for calls that the platform may let throw
    std::size_t limit = 0;      // one call more ends with std::runtime_error, so that no loop is endless; 0: none
};

class FQCORE_API FaultInjection {
public:
    /// Replaces the plan and starts counting from zero.
    static void arm(FaultPlan plan);
    /// No call fails any more; the names seen since `arm` or `watch` stay readable.
    static void disarm();
    /// Fails nothing, but records the names of the calls that could have failed. `observer` hears of each before it is
    /// made; what it throws comes out of the call.
    static void watch(std::function<void(std::string_view call)> observer = {});
    /// The calls seen since the last `arm` or `watch`, in order.
    static const std::vector<std::string>& seen();
    /// How many of them were made to fail.
    static std::size_t failedCalls();

    /// For the platform: the code to fail with when this call is to fail, `failure` where the plan names none.
    static std::optional<int> injectedFailure(std::string_view call, int failure)
    {
        return listening_ ? decide(call, failure) : std::nullopt;
    }

private:
    static std::optional<int> decide(std::string_view call, int failure);
    static bool listening_;
};

/// A plan for the length of a scope.
class ScopedFault {
public:
    explicit ScopedFault(FaultPlan plan) { FaultInjection::arm(std::move(plan)); }
    ~ScopedFault() { FaultInjection::disarm(); }
    ScopedFault(const ScopedFault&) = delete;
    ScopedFault& operator=(const ScopedFault&) = delete;
};

} // namespace Embedded
