// A host may load and unload the module any number of times without growing.
#include <iostream>

#include "module/mapped_files.h"
#include "module/module_test.h"
#include "module/process_resources.h"

namespace Tests {
namespace {

constexpr int kWarmUpRounds = 100;
constexpr int kRounds = 1000;
/// Memory that the allocator may keep and that a sanitizer needs for its records of libraries.
constexpr std::size_t kAllowance = std::size_t{ORVEL_BYTES_A_LOADING} * (kRounds - kWarmUpRounds);

class RepeatedLoading : public ModuleTest {
protected:
    template <class Round>
    static void expectNoGrowth(Round round)
    {
        ProcessResources before;
        for (int done = 0; done < kRounds; ++done) {
            if (done == kWarmUpRounds)
                before = processResources();
            round();
        }
        const ProcessResources after = processResources();
        std::cout << "after " << kWarmUpRounds << " rounds " << before.bytes << " bytes and " << before.handles
                  << " handles, after " << kRounds << " " << after.bytes << " and " << after.handles << "\n";
        EXPECT_GT(before.bytes, 0U);
        EXPECT_GT(before.handles, 0U);
        EXPECT_LT(after.bytes, before.bytes + kAllowance);
        EXPECT_LE(after.handles, before.handles);
    }
};

TEST_F(RepeatedLoading, LoadingByTheHost_DoesNotGrow)
{
    expectNoGrowth([this] {
        load();
        unload();
    });
}

TEST_F(RepeatedLoading, LoadingByTheSystem_DoesNotGrow)
{
    expectNoGrowth([] { ASSERT_TRUE(mapAndUnmap(kModuleFile)); });
}

} // namespace
} // namespace Tests
