#include "coordsys/scoped_report.h"

#include <gtest/gtest.h>

#include <optional>

namespace {

using Orvel::ScopedReport;
using Orvel::ScopedStatusReport;
using Zentara::Infrastructure::SpatialReference::Status;

constexpr auto kUntouched = static_cast<Status>(77);

/// What a caller's 77 becomes when the scope ends with this library status and this result.
Status reported(Status local, std::optional<Qeapp::ErrorStatus> result)
{
    Status caller = kUntouched;
    {
        const ScopedStatusReport report(&caller, &local, result ? &*result : nullptr);
    }
    return caller;
}

TEST(StatusReport, SuccessWithoutALibraryStatusWritesZero)
{
    EXPECT_EQ(reported(Status{0}, Qeapp::eOk), 0);
}

TEST(StatusReport, SuccessWritesTheStatusThatWasAccepted)
{
    EXPECT_EQ(reported(Status{35}, Qeapp::eOk), 35);
}

TEST(StatusReport, FailureWithoutALibraryStatusWrites52)
{
    EXPECT_EQ(reported(Status{0}, Qeapp::eInvalidInput), 52);
}

TEST(StatusReport, FailureWithALibraryStatusWritesNothing)
{
    EXPECT_EQ(reported(Status{43}, Qeapp::eInvalidInput), 77);
}

TEST(StatusReport, AHostResultWithoutANameIsAFailureToo)
{
    EXPECT_EQ(reported(Status{0}, static_cast<Qeapp::ErrorStatus>(999)), 52);
}

TEST(StatusReport, WithoutATrackedResultTheStatusIsAlwaysWritten)
{
    EXPECT_EQ(reported(Status{43}, std::nullopt), 43);
}

TEST(StatusReport, WithoutATrackedResultZeroIsWrittenToo)
{
    EXPECT_EQ(reported(Status{0}, std::nullopt), 0);
}

TEST(StatusReport, WithoutALocalStatusNothingIsWritten)
{
    Status caller = kUntouched;
    const Qeapp::ErrorStatus result = Qeapp::eInvalidInput;
    {
        const ScopedStatusReport report(&caller, nullptr, &result);
    }
    EXPECT_EQ(caller, 77);
}

TEST(StatusReport, ACallerWithoutAStatusIsAllowed)
{
    const Status local{43};
    const Qeapp::ErrorStatus result = Qeapp::eOk;
    EXPECT_NO_THROW(ScopedStatusReport(nullptr, &local, &result));
}

TEST(StatusReport, WritesOnlyWhenTheScopeEnds)
{
    Status caller = kUntouched;
    const Status local{0};
    const Qeapp::ErrorStatus result = Qeapp::eOk;
    const ScopedStatusReport report(&caller, &local, &result);
    EXPECT_EQ(caller, 77);
}

TEST(StatusReport, SeesWhatWasSetAfterItWasMade)
{
    Status caller = kUntouched;
    {
        Status local{0};
        Qeapp::ErrorStatus result = Qeapp::eOk;
        const ScopedStatusReport report(&caller, &local, &result);
        local = Status{35};
        result = Qeapp::eInvalidInput;
        local = Status{0};
    }
    EXPECT_EQ(caller, 52);
}

/// What a caller's 77 becomes when an exception ends the scope.
Status reportedWhenThrowing(Status local, Qeapp::ErrorStatus result)
{
    Status caller = kUntouched;
    try {
        const ScopedStatusReport report(&caller, &local, &result);
        throw 1;
    } catch (int) {
        return caller;
    }
}

TEST(StatusReport, AnExceptionBeforeAnyFailureWritesTheLastStatus)
{
    EXPECT_EQ(reportedWhenThrowing(Status{0}, Qeapp::eOk), 0);
}

TEST(StatusReport, AnExceptionAfterAFailureWrites52)
{
    EXPECT_EQ(reportedWhenThrowing(Status{0}, Qeapp::eInvalidInput), 52);
}

TEST(StatusReport, AnExceptionAfterALibraryFailureWritesNothing)
{
    EXPECT_EQ(reportedWhenThrowing(Status{43}, Qeapp::eInvalidInput), 77);
}

TEST(FlagReport, WithoutATrackedResultAFalseFlagIsCopiedOut)
{
    bool caller = true;
    const bool local = false;
    {
        const ScopedReport<bool> report(&caller, &local, nullptr, false, false);
    }
    EXPECT_FALSE(caller);
}

TEST(FlagReport, WithoutATrackedResultATrueFlagIsCopiedOut)
{
    bool caller = false;
    const bool local = true;
    {
        const ScopedReport<bool> report(&caller, &local, nullptr, false, false);
    }
    EXPECT_TRUE(caller);
}

TEST(FlagReport, AFailureWithTheFlagUnsetWritesTheFallback)
{
    bool caller = false;
    const bool local = false;
    const Qeapp::ErrorStatus result = Qeapp::eInvalidInput;
    {
        const ScopedReport<bool> report(&caller, &local, &result, false, true);
    }
    EXPECT_TRUE(caller);
}

TEST(FlagReport, ACallerWithoutAFlagIsAllowed)
{
    const bool local = true;
    EXPECT_NO_THROW(ScopedReport<bool>(nullptr, &local, nullptr, false, false));
}

} // namespace
