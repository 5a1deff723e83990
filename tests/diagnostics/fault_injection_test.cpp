#include "embedded/diagnostics/fault_injection.h"

#include <gtest/gtest.h>

#include <new>
#include <optional>
#include <stdexcept>

namespace Tests {
namespace {

using namespace Embedded;
using Calls = std::vector<std::string>;

TEST(FaultInjection, NoCallFailsUnlessArmed)
{
    FaultInjection::disarm();
    EXPECT_EQ(FaultInjection::injectedFailure("call", 7), std::nullopt);
}

TEST(FaultInjection, TheNthCallFailsOnce)
{
    const ScopedFault fault({.call = {}, .occurrence = 2, .code = {}});
    EXPECT_EQ(FaultInjection::injectedFailure("first", 7), std::nullopt);
    EXPECT_EQ(FaultInjection::injectedFailure("second", 7), 7);
    EXPECT_EQ(FaultInjection::injectedFailure("third", 7), std::nullopt);
    EXPECT_EQ(FaultInjection::failedCalls(), 1U);
    EXPECT_EQ(FaultInjection::seen(), (Calls{"first", "second", "third"}));
}

TEST(FaultInjection, EveryCallFromTheNthOnFails)
{
    const ScopedFault fault({.call = {}, .occurrence = 2, .fromThenOn = true, .code = {}});
    EXPECT_EQ(FaultInjection::injectedFailure("a", 7), std::nullopt);
    EXPECT_EQ(FaultInjection::injectedFailure("b", 7), 7);
    EXPECT_EQ(FaultInjection::injectedFailure("c", 8), 8);
    EXPECT_EQ(FaultInjection::failedCalls(), 2U);
}

TEST(FaultInjection, OnlyTheNamedCallIsCountedAndFailed)
{
    const ScopedFault fault({.call = "b", .occurrence = 2, .code = 99});
    EXPECT_EQ(FaultInjection::injectedFailure("b", 7), std::nullopt);
    EXPECT_EQ(FaultInjection::injectedFailure("a", 7), std::nullopt);
    EXPECT_EQ(FaultInjection::injectedFailure("b", 7), 99);
}

TEST(FaultInjection, ASecondChosenCallFailsToo)
{
    const ScopedFault fault({.call = {}, .occurrence = 1, .code = {}, .second = 3});
    EXPECT_EQ(FaultInjection::injectedFailure("a", 7), 7);
    EXPECT_EQ(FaultInjection::injectedFailure("b", 7), std::nullopt);
    EXPECT_EQ(FaultInjection::injectedFailure("c", 7), 7);
    EXPECT_EQ(FaultInjection::injectedFailure("d", 7), std::nullopt);
    EXPECT_EQ(FaultInjection::failedCalls(), 2U);
}

TEST(FaultInjection, ACallCanFailWithAnException)
{
    const ScopedFault fault({.call = {}, .occurrence = 2, .code = {}, .throws = true});
    EXPECT_EQ(FaultInjection::injectedFailure("a", 7), std::nullopt);
    EXPECT_THROW(static_cast<void>(FaultInjection::injectedFailure("b", 7)), std::bad_alloc); // it throws
    EXPECT_EQ(FaultInjection::injectedFailure("c", 7), std::nullopt);
    EXPECT_EQ(FaultInjection::failedCalls(), 1U);
}

TEST(FaultInjection, ACallBeyondTheLimitThrows)
{
    const ScopedFault fault({.call = "none", .occurrence = 1, .code = {}, .limit = 2});
    EXPECT_EQ(FaultInjection::injectedFailure("a", 7), std::nullopt);
    EXPECT_EQ(FaultInjection::injectedFailure("b", 7), std::nullopt);
    EXPECT_THROW(static_cast<void>(FaultInjection::injectedFailure("c", 7)), std::runtime_error); // it throws
}

TEST(FaultInjection, WatchingRecordsCallsAndFailsNone)
{
    FaultInjection::watch();
    EXPECT_EQ(FaultInjection::injectedFailure("a", 7), std::nullopt);
    FaultInjection::disarm();
    EXPECT_EQ(FaultInjection::injectedFailure("unseen", 7), std::nullopt);
    EXPECT_EQ(FaultInjection::seen(), Calls{"a"});
    EXPECT_EQ(FaultInjection::failedCalls(), 0U);
}

TEST(FaultInjection, AnObserverIsNotifiedOfEachCallAndMayThrow)
{
    Calls observed;
    FaultInjection::watch([&](std::string_view call) {
        observed.emplace_back(call);
        if (call == "b")
            throw std::runtime_error("b");
    });
    EXPECT_EQ(FaultInjection::injectedFailure("a", 7), std::nullopt);
    EXPECT_THROW(static_cast<void>(FaultInjection::injectedFailure("b", 7)), std::runtime_error);
    FaultInjection::watch();
    EXPECT_EQ(FaultInjection::injectedFailure("c", 7), std::nullopt);
    FaultInjection::disarm();
    EXPECT_EQ(observed, (Calls{"a", "b"}));
}

} // namespace
} // namespace Tests
