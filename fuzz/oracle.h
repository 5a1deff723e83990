// How a target finds fault with the product.
#pragma once

#include <string_view>

#include "embedded/diagnostics/resource_counters.h"

namespace Fuzz {

/// Ends the process with a message where the promise does not hold, which is what a fuzzer takes for a finding.
void require(bool holds, std::string_view promise);

/// That the platform holds, at the end of a scope, what it held at the beginning.
class NothingLeft {
public:
    NothingLeft() : before_(Embedded::ResourceCounters::now()) {}
    NothingLeft(const NothingLeft&) = delete;
    NothingLeft& operator=(const NothingLeft&) = delete;
    ~NothingLeft();

private:
    Embedded::ResourceCounts before_;
};

} // namespace Fuzz
