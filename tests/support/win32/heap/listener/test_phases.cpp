// Tells the guarded heap which test is running, so that a leak found at the end names the test that made it.
#include <gtest/gtest.h>

#include <string>

#include "support/win32/heap/phases.h"

namespace GuardedHeap {
namespace {

class PhaseListener : public testing::EmptyTestEventListener {
    void OnTestStart(const testing::TestInfo& test) override
    {
        enterPhase(std::string(test.test_suite_name()) + "." + test.name());
    }
    void OnTestEnd(const testing::TestInfo&) override { enterPhase(""); }
};

[[maybe_unused]] const bool isListening = [] {
    testing::UnitTest::GetInstance()->listeners().Append(new PhaseListener); // the list owns it
    return true;
}();

} // namespace
} // namespace GuardedHeap
