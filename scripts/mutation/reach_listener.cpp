// Linked into the test programs by scripts/mutate: writes down, for each test, how long it took and which places that
// can be changed it reached, and how often.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>

#include "mutation/selection.h"

namespace {

using Mutation::selection;

class ReachListener : public testing::EmptyTestEventListener {
public:
    explicit ReachListener(const char* path) : record_(path) {}

    void OnTestStart(const testing::TestInfo&) override { std::ranges::fill(selection.reached, 0ULL); }
    void OnTestEnd(const testing::TestInfo& test) override
    {
        record_ << test.test_suite_name() << '.' << test.name() << '\t' << test.result()->elapsed_time() << '\t';
        for (std::size_t place = 0; place < Mutation::kMostMutants; ++place) {
            if (selection.reached[place] != 0)
                record_ << place << ':' << selection.reached[place] << ' ';
        }
        record_ << '\n';
    }

private:
    std::ofstream record_;
};

const bool kListening = [] {
    const char* const path = std::getenv("ORVEL_MUTANT_RECORD");
    if (path != nullptr)
        testing::UnitTest::GetInstance()->listeners().Append(new ReachListener(path)); // the framework deletes it
    return path != nullptr;
}();

} // namespace
