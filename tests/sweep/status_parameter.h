// The library status that some functions report beside their result.
#pragma once

#include <gtest/gtest.h>

#include "platform/spatial_reference.h"
#include "sweep/outcome.h"

namespace Tests {

/// The status before the call, so that a test sees whether the call wrote it.
inline constexpr auto kStatusBefore = static_cast<Zentara::Infrastructure::SpatialReference::Status>(7700);

using StatusParameter = Zentara::Infrastructure::SpatialReference::Status;

/// Checks the status: 52 or not written after a failure, written after a success or an exception.
inline void expectReported(const Outcome& outcome, StatusParameter status)
{
    if (outcome.returned() && outcome.result != 0) {
        EXPECT_TRUE(status == kStatusBefore || status == 52) << "status " << status;
        return;
    }
    EXPECT_NE(status, kStatusBefore) << "the status was not written";
}

} // namespace Tests
