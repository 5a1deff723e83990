// Runs every exported function in each of its scenarios and makes each thing that can fail do so in turn.
//
//     ORVEL_SWEEP_POINT=function:scenario:kind:n sweep_tests
//
// runs one point again. README.md in this folder describes the rest.
#include <algorithm>
#include <iostream>
#include <map>
#include <tuple>

#include "support/platform_test.h"
#include "sweep/sweep.h"

namespace Tests {
namespace {

std::map<std::string, std::size_t>& pointsByFunction()
{
    static std::map<std::string, std::size_t> points;
    return points;
}

/// Prints the number of points at the end.
class PointCount : public testing::Environment {
public:
    void TearDown() override
    {
        std::size_t all = 0;
        for (const auto& [function, points] : pointsByFunction()) {
            std::cout << "sweep: " << points << " points of " << function << '\n';
            all += points;
        }
        std::cout << "sweep: " << all << " points in all\n";
        EXPECT_TRUE(!isReplaying() || all > 0) << "ORVEL_SWEEP_POINT names no point";
    }
};

const auto* const kPointCount = testing::AddGlobalTestEnvironment(new PointCount); // the framework deletes it

using Case = std::tuple<const Scenario*, FaultKind>;

class EveryCall : public PlatformTest, public testing::WithParamInterface<Case> {};

std::vector<Case> cases()
{
    std::vector<Case> all;
    for (const Scenario& scenario : allScenarios()) {
        for (const FaultKind kind : kFaultKinds)
            all.emplace_back(&scenario, kind);
    }
    return all;
}

/// Contains letters, digits and underscores only.
std::string testName(const testing::TestParamInfo<Case>& info)
{
    const auto& [scenario, kind] = info.param;
    std::string name = scenarioName(*scenario) + "_" + faultKindName(kind);
    std::ranges::replace_if(
        name, [](char c) { return std::isalnum(static_cast<unsigned char>(c)) == 0; }, '_');
    return name;
}

TEST_P(EveryCall, EveryFault_KeepsEveryPromise)
{
    const auto& [scenario, kind] = GetParam();
    if (isReplaying() && !placeToReplay(*scenario, kind))
        return;
    pointsByFunction()[scenario->function] += Sweep(*scenario).run(kind);
}

INSTANTIATE_TEST_SUITE_P(Sweep, EveryCall, testing::ValuesIn(cases()), testName);

} // namespace
} // namespace Tests
