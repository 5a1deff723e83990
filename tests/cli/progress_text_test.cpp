// How far a batch is, how fast it goes, and how long it will take.
#include "orvelcs/cli/progress_text.h"

#include <gtest/gtest.h>

namespace Tests {
namespace {

using Orvelcs::progressText;
using std::chrono::milliseconds;

TEST(ProgressText, FirstSeconds_HaveNoRate)
{
    EXPECT_EQ(progressText(1, 10, milliseconds(0)), "[1/10]");
    EXPECT_EQ(progressText(9, 10, milliseconds(1999)), "[9/10]");
}

TEST(ProgressText, FirstElement_HasNoRate)
{
    EXPECT_EQ(progressText(1, 10, milliseconds(60000)), "[1/10]");
}

TEST(ProgressText, Rate_CountsWhatIsDone)
{
    EXPECT_EQ(progressText(301, 3000, milliseconds(2000)), "[301/3000] 150/s, 18 s left");
    EXPECT_EQ(progressText(5, 10, milliseconds(2000)), "[5/10] 2.0/s, 3 s left");
    EXPECT_EQ(progressText(2, 10, milliseconds(10000)), "[2/10] 6.0/min, 1 min 30 s left");
}

TEST(ProgressText, TimeLeft_IsRoundedUp)
{
    EXPECT_EQ(progressText(11, 12, milliseconds(2500)), "[11/12] 4.0/s, 1 s left");
    EXPECT_EQ(progressText(11, 40011, milliseconds(2000)), "[11/40011] 5.0/s, 2 h 13 min left");
}

TEST(ProgressText, PointsOfAStreamOfUnknownLength_AreCounted)
{
    EXPECT_EQ(progressText(1200, Orvelcs::StreamPosition{5000, 0}, milliseconds(1999)), "1200 points");
    EXPECT_EQ(progressText(1200, Orvelcs::StreamPosition{5000, 0}, milliseconds(2000)), "1200 points, 600/s");
}

TEST(ProgressText, PointsOfAFile_HaveTheShareThatWasReadAndTheTimeLeft)
{
    EXPECT_EQ(progressText(0, Orvelcs::StreamPosition{0, 1000}, milliseconds(9000)), "[0 %] 0 points, 0.0/min");
    EXPECT_EQ(progressText(1200, Orvelcs::StreamPosition{459, 1000}, milliseconds(500)), "[45 %] 1200 points");
    EXPECT_EQ(progressText(1200, Orvelcs::StreamPosition{250, 1000}, milliseconds(20000)),
              "[25 %] 1200 points, 60/s, 1 min 0 s left");
    EXPECT_EQ(progressText(1200, Orvelcs::StreamPosition{1000, 1000}, milliseconds(3000)),
              "[100 %] 1200 points, 400/s, 0 s left");
    EXPECT_EQ(progressText(1200, Orvelcs::StreamPosition{1001, 1000}, milliseconds(3000)),
              "1200 points, 400/s"); // grew
}

} // namespace
} // namespace Tests
