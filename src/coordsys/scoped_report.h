// Fills a function's optional out-parameter on every way out of the function.
#pragma once

#include "platform/host.h"
#include "platform/spatial_reference.h"

namespace Orvel {

/// Writes the caller's out-parameter at the end of the scope:
///  - the local value where the function succeeded or tracks no result;
///  - the fallback where the function failed and the local value is still the unset one;
///  - nothing where the function failed with another local value, and where a pointer to one of the two values is null.
template <class Value>
class ScopedReport {
public:
    /// A null `result` means that no result is tracked. Then the last two arguments are not used.
    ScopedReport(Value* caller, const Value* local, const Qeapp::ErrorStatus* result = nullptr, Value unset = {},
                 Value fallback = {})
        : caller_(caller), local_(local), result_(result), unset_(unset), fallback_(fallback)
    {
    }
    ScopedReport(const ScopedReport&) = delete;
    ScopedReport& operator=(const ScopedReport&) = delete;
    ~ScopedReport()
    {
        if (caller_ == nullptr || local_ == nullptr)
            return;
        if (result_ == nullptr || *result_ == Qeapp::eOk)
            *caller_ = *local_;
        else if (*local_ == unset_)
            *caller_ = fallback_;
    }

private:
    Value* caller_;
    const Value* local_;
    const Qeapp::ErrorStatus* result_;
    Value unset_;
    Value fallback_;
};

/// Reports a library status: 0 is unset, 52 means a failure for which no library status was recorded.
class ScopedStatusReport : public ScopedReport<Zentara::Infrastructure::SpatialReference::Status> {
public:
    using Status = Zentara::Infrastructure::SpatialReference::Status;
    ScopedStatusReport(Status* caller, const Status* local, const Qeapp::ErrorStatus* result)
        : ScopedReport(caller, local, result, Zentara::Infrastructure::SpatialReference::statusOk,
                       Zentara::Infrastructure::SpatialReference::statusFailed)
    {
    }
};

} // namespace Orvel
