// Several processes change the user's configuration at once.
#include "concurrent_commands.h"

namespace Tests {
namespace {

using ConcurrentConfig = ConcurrentCommands;

TEST_F(ConcurrentConfig, EightAdditions_AreAllStored)
{
    for (int round = 0; round < rounds(2) && !HasFailure(); ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        std::filesystem::remove_all(path("user"));
        expectAdditionsStored({"--user", "--user-dir", path("user").string()});
    }
}

} // namespace
} // namespace Tests
