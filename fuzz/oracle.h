// Checks of promises in fuzz targets.
#pragma once

#include <string_view>

#include "embedded/diagnostics/resource_counters.h"

namespace Fuzz {

/// Ends the process with a message if the promise does not hold. A fuzzer reports that as a finding.
void require(bool holds, std::string_view promise);

/// Checks at the end of a scope that the platform holds what it held at the beginning.
class LeakCheck {
public:
    LeakCheck() : before_(Embedded::ResourceCounters::now()) {}
    LeakCheck(const LeakCheck&) = delete;
    LeakCheck& operator=(const LeakCheck&) = delete;
    ~LeakCheck();

private:
    Embedded::ResourceCounts before_;
};

} // namespace Fuzz
