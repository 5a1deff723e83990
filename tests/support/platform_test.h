// The root of every fixture: after each test the platform must hold exactly what it held before.
#pragma once

#include <gtest/gtest.h>

#include "embedded/diagnostics/resource_counters.h"

namespace Tests {

class PlatformTest : public testing::Test {
protected:
    PlatformTest();
    /// Fails the test when anything is still open, locked, in a transaction or allocated, or when a fault is armed.
    ~PlatformTest() override;

private:
    Embedded::ResourceCounts before_;
};

} // namespace Tests
