#include "coordsys/scoped_report.h"

#include <gtest/gtest.h>

#include <optional>

namespace {

using Orvel::ScopedReport;
using Orvel::ScopedStatusReport;
using Zentara::Infrastructure::SpatialReference::Status;

constexpr auto kUntouched = static_cast<Status>(77);

/// Ends a scope with the library status and the result. Returns the caller's status, which was 77 before.
Status reportStatus(Status local, std::optional<Qeapp::ErrorStatus> result)
{
    Status caller = kUntouched;
    {
        const ScopedStatusReport report(&caller, &local, result ? &*result : nullptr);
    }
    return caller;
}

TEST(StatusReport, SuccessWithStatusZeroWritesZero)
{
    EXPECT_EQ(reportStatus(Status{0}, Qeapp::eOk), 0);
}

TEST(StatusReport, SuccessWritesTheAcceptedStatus)
{
    EXPECT_EQ(reportStatus(Status{35}, Qeapp::eOk), 35);
}

TEST(StatusReport, FailureWithStatusZeroWrites52)
{
    EXPECT_EQ(reportStatus(Status{0}, Qeapp::eInvalidInput), 52);
}

TEST(StatusReport, FailureWithALibraryStatusWritesNothing)
{
    EXPECT_EQ(reportStatus(Status{43}, Qeapp::eInvalidInput), 77);
}

TEST(StatusReport, UnknownHostResultIsAFailure)
{
    EXPECT_EQ(reportStatus(Status{0}, static_cast<Qeapp::ErrorStatus>(999)), 52);
}

TEST(StatusReport, StatusIsWrittenWithoutAResult)
{
    EXPECT_EQ(reportStatus(Status{43}, std::nullopt), 43);
}

TEST(StatusReport, StatusZeroIsWrittenWithoutAResult)
{
    EXPECT_EQ(reportStatus(Status{0}, std::nullopt), 0);
}

TEST(StatusReport, NullLocalStatusWritesNothing)
{
    Status caller = kUntouched;
    const Qeapp::ErrorStatus result = Qeapp::eInvalidInput;
    {
        const ScopedStatusReport report(&caller, nullptr, &result);
    }
    EXPECT_EQ(caller, 77);
}

TEST(StatusReport, NullCallersStatusIsAllowed)
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

TEST(StatusReport, ReportsTheValuesAtTheEndOfTheScope)
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

/// Ends a scope by an exception. Returns the caller's status, which was 77 before.
Status reportStatusWhenThrowing(Status local, Qeapp::ErrorStatus result)
{
    Status caller = kUntouched;
    try {
        const ScopedStatusReport report(&caller, &local, &result);
        throw 1;
    } catch (int) {
        return caller;
    }
}

TEST(StatusReport, ExceptionBeforeAnyFailureWritesTheStatus)
{
    EXPECT_EQ(reportStatusWhenThrowing(Status{0}, Qeapp::eOk), 0);
}

TEST(StatusReport, ExceptionAfterAFailureWrites52)
{
    EXPECT_EQ(reportStatusWhenThrowing(Status{0}, Qeapp::eInvalidInput), 52);
}

TEST(StatusReport, ExceptionAfterALibraryFailureWritesNothing)
{
    EXPECT_EQ(reportStatusWhenThrowing(Status{43}, Qeapp::eInvalidInput), 77);
}

TEST(FlagReport, FalseFlagIsWrittenWithoutAResult)
{
    bool caller = true;
    const bool local = false;
    {
        const ScopedReport<bool> report(&caller, &local, nullptr, false, false);
    }
    EXPECT_FALSE(caller);
}

TEST(FlagReport, TrueFlagIsWrittenWithoutAResult)
{
    bool caller = false;
    const bool local = true;
    {
        const ScopedReport<bool> report(&caller, &local, nullptr, false, false);
    }
    EXPECT_TRUE(caller);
}

TEST(FlagReport, FailureWithAFalseFlagWritesTheFallback)
{
    bool caller = false;
    const bool local = false;
    const Qeapp::ErrorStatus result = Qeapp::eInvalidInput;
    {
        const ScopedReport<bool> report(&caller, &local, &result, false, true);
    }
    EXPECT_TRUE(caller);
}

TEST(FlagReport, NullFlagIsAllowed)
{
    const bool local = true;
    EXPECT_NO_THROW(ScopedReport<bool>(nullptr, &local, nullptr, false, false));
}

} // namespace
