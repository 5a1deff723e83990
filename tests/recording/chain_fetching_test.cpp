// Checks which objects are open while stored definitions are fetched and decoded, and what exceptions cause.
#include <stdexcept>

#include "embedded/diagnostics/fault_injection.h"
#include "embedded/diagnostics/resource_counters.h"
#include "recording/recording_test.h"

namespace Tests {
namespace {

constexpr const char* kFetch = "QeDbXrecord::rbChain";

class ChainFetching : public RecordingTest {
protected:
    ChainFetching() { storeXrecord(L"MINE:1", {kSystem, kDatum, kEllipsoid}); }
};

TEST_F(ChainFetching, OnlyTheXrecord_IsOpenWhileItsChainIsFetched)
{
    std::vector<long> open;
    Embedded::FaultInjection::watch([&](std::string_view call) {
        if (call == kFetch)
            open.push_back(Embedded::ResourceCounters::now()[Embedded::ResourceKind::openObject]);
    });
    EXPECT_EQ(read().size(), 3U);
    EXPECT_EQ(open, std::vector<long>{1});
}

TEST_F(ChainFetching, Nothing_IsOpenWhileTheChainIsDecoded)
{
    EXPECT_EQ(read().size(), 3U);
    ASSERT_EQ(Recording::findCalls("DefinitionStream::Read").size(), 3U);
    for (const Recording::Call& call : Recording::calls())
        EXPECT_EQ(call.openObjects, 0) << call.text;
}

TEST_F(ChainFetching, AnyException_ReadsAsNoXrecord)
{
    const auto throwAtFetch = [](auto exception) {
        return [=](std::string_view call) {
            if (call == kFetch)
                throw exception;
        };
    };
    for (const std::function<void(std::string_view)>& observer :
         {std::function<void(std::string_view)>(throwAtFetch(std::bad_alloc())),
          std::function<void(std::string_view)>(throwAtFetch(std::runtime_error("damaged"))),
          std::function<void(std::string_view)>(throwAtFetch(7))}) {
        Embedded::FaultInjection::watch(observer);
        EXPECT_EQ(read(), Texts());
        EXPECT_EQ(result, Qeapp::eNotApplicable) << "the catalog does not have the code";
    }
}

} // namespace
} // namespace Tests
