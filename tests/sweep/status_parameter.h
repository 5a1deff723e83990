// The library status that some functions report beside their result.
#pragma once

#include <gtest/gtest.h>

#include "platform/spatial_reference.h"
#include "sweep/outcome.h"

namespace Tests {

/// Set before the call, so that it can be told whether it was written.
inline constexpr auto kStatusBefore = static_cast<Zentara::Infrastructure::SpatialReference::Status>(7700);

using StatusParameter = Zentara::Infrastructure::SpatialReference::Status;

/// After a failure 52 or as it was; after success, and after an exception, written.
inline void expectReported(const Outcome& outcome, StatusParameter status)
{
    if (outcome.returned() && outcome.result != 0) {
        EXPECT_TRUE(status == kStatusBefore || status == 52) << "status " << status;
        return;
    }
    EXPECT_NE(status, kStatusBefore) << "the status was not written";
}

} // namespace Tests
