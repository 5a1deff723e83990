#include <gtest/gtest.h>

#include <new>
#include <optional>
#include <stdexcept>

#include "embedded/diagnostics/fault_injection.h"
#include "embedded/diagnostics/resource_counters.h"

namespace {

using namespace Embedded;
using Calls = std::vector<std::string>;

TEST(Audit, TheDifferenceNamesWhatIsHeldBeyond)
{
    const AuditCounts before = Audit::now();
    Audit::add(Held::openObject, 2);
    Audit::add(Held::resbuf);
    EXPECT_EQ(Audit::difference(before, Audit::now()), "2 open objects, 1 resbuf");
    Audit::remove(Held::openObject, 2);
    Audit::remove(Held::resbuf);
    EXPECT_EQ(Audit::difference(before, Audit::now()), "");
}

TEST(Faults, NothingFailsUnlessArmed)
{
    Faults::disarm();
    EXPECT_EQ(Faults::strike("call", 7), std::nullopt);
}

TEST(Faults, TheNthCallFailsOnce)
{
    const ScopedFault fault({.call = {}, .occurrence = 2, .code = {}});
    EXPECT_EQ(Faults::strike("first", 7), std::nullopt);
    EXPECT_EQ(Faults::strike("second", 7), 7);
    EXPECT_EQ(Faults::strike("third", 7), std::nullopt);
    EXPECT_EQ(Faults::struck(), 1U);
    EXPECT_EQ(Faults::seen(), (Calls{"first", "second", "third"}));
}

TEST(Faults, FromTheNthCallOnAllFail)
{
    const ScopedFault fault({.call = {}, .occurrence = 2, .fromThenOn = true, .code = {}});
    EXPECT_EQ(Faults::strike("a", 7), std::nullopt);
    EXPECT_EQ(Faults::strike("b", 7), 7);
    EXPECT_EQ(Faults::strike("c", 8), 8);
    EXPECT_EQ(Faults::struck(), 2U);
}

TEST(Faults, OnlyTheNamedCallIsCountedAndFailed)
{
    const ScopedFault fault({.call = "b", .occurrence = 2, .code = 99});
    EXPECT_EQ(Faults::strike("b", 7), std::nullopt);
    EXPECT_EQ(Faults::strike("a", 7), std::nullopt);
    EXPECT_EQ(Faults::strike("b", 7), 99);
}

TEST(Faults, ASecondCallFailsToo)
{
    const ScopedFault fault({.call = {}, .occurrence = 1, .code = {}, .second = 3});
    EXPECT_EQ(Faults::strike("a", 7), 7);
    EXPECT_EQ(Faults::strike("b", 7), std::nullopt);
    EXPECT_EQ(Faults::strike("c", 7), 7);
    EXPECT_EQ(Faults::strike("d", 7), std::nullopt);
    EXPECT_EQ(Faults::struck(), 2U);
}

TEST(Faults, ACallCanFailByAnException)
{
    const ScopedFault fault({.call = {}, .occurrence = 2, .code = {}, .throws = true});
    EXPECT_EQ(Faults::strike("a", 7), std::nullopt);
    EXPECT_THROW(static_cast<void>(Faults::strike("b", 7)), std::bad_alloc); // there is no answer
    EXPECT_EQ(Faults::strike("c", 7), std::nullopt);
    EXPECT_EQ(Faults::struck(), 1U);
}

TEST(Faults, CallsBeyondTheLimitAreCutOff)
{
    const ScopedFault fault({.call = "none", .occurrence = 1, .code = {}, .limit = 2});
    EXPECT_EQ(Faults::strike("a", 7), std::nullopt);
    EXPECT_EQ(Faults::strike("b", 7), std::nullopt);
    EXPECT_THROW(static_cast<void>(Faults::strike("c", 7)), std::runtime_error); // there is no answer
}

TEST(Faults, WatchingRecordsAndFailsNothing)
{
    Faults::watch();
    EXPECT_EQ(Faults::strike("a", 7), std::nullopt);
    Faults::disarm();
    EXPECT_EQ(Faults::strike("unseen", 7), std::nullopt);
    EXPECT_EQ(Faults::seen(), Calls{"a"});
    EXPECT_EQ(Faults::struck(), 0U);
}

TEST(Faults, AnObserverHearsOfEachCallAndMayThrow)
{
    Calls heard;
    Faults::watch([&](std::string_view call) {
        heard.emplace_back(call);
        if (call == "b")
            throw std::runtime_error("b");
    });
    EXPECT_EQ(Faults::strike("a", 7), std::nullopt);
    EXPECT_THROW(static_cast<void>(Faults::strike("b", 7)), std::runtime_error);
    Faults::watch();
    EXPECT_EQ(Faults::strike("c", 7), std::nullopt);
    Faults::disarm();
    EXPECT_EQ(heard, (Calls{"a", "b"}));
}

} // namespace
