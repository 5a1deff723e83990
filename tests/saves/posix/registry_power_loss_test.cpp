// Many changes of the registry, and the power goes: what is left are the changes up to one of them.
#include <gtest/gtest.h>

#include "saves/posix/save_scenario.h"
#include "saves/posix/simulated_disk.h"
#include "support/platform_test.h"
#include "support/temporary_folder.h"

namespace Tests {
namespace {

namespace fs = std::filesystem;

class RegistryPowerLoss : public PlatformTest {
protected:
    static constexpr std::size_t kValues = 20; // the file is rewritten once on the way

    /// Sets one value after the other; the calls, and after how many of them each was set.
    void setAll()
    {
        fs::create_directory(folder);
        const WatchedFolder watched(folder);
        for (std::size_t number = 0; number < kValues; ++number) {
            const std::wstring text(5'000, static_cast<wchar_t>(L'a' + number));
            ASSERT_TRUE(setRegistryValue(folder, number % 4 == 0 ? L"other" : L"again", text));
            contents.push_back(registryContent(folder));
            callsUntil.push_back(watched.calls().size());
        }
        calls = watched.calls();
    }
    /// Which of the changes is the last that the state holds; kValues for none of them.
    std::size_t lastOf(const FolderContents& state)
    {
        makeFolder(place.path() / "found", state);
        const std::string content = registryContent(place.path() / "found");
        const auto found = std::find(contents.begin(), contents.end(), content);
        if (found == contents.end()) {
            EXPECT_EQ(content, "") << "neither nothing nor what some of the changes leave";
            return kValues;
        }
        return static_cast<std::size_t>(found - contents.begin());
    }

    TemporaryFolder place;
    fs::path folder = place.path() / "registry";
    std::vector<DiskCall> calls;
    std::vector<std::string> contents;
    std::vector<std::size_t> callsUntil;
};

TEST_F(RegistryPowerLoss, LeavesTheChangesUpToOneOfThem)
{
    setAll();
    SimulatedDisk disk(folder, {});
    std::set<FolderContents> states;
    std::set<std::size_t> found;
    for (const DiskCall& call : calls) {
        disk.apply(call);
        for (const FolderContents& state : disk.afterPowerLoss()) {
            if (states.insert(state).second)
                found.insert(lastOf(state));
        }
    }
    EXPECT_EQ(found.size(), kValues + 1); // each of the changes was once the last, and once there was none
}

TEST_F(RegistryPowerLoss, TakesNothingBackFromBeforeTheFileWasRewritten)
{
    setAll();
    SimulatedDisk disk(folder, {});
    std::size_t rewritten = 0;
    std::size_t number = 0;
    for (std::size_t call = 0; call < calls.size(); ++call) {
        disk.apply(calls[call]);
        const bool flushesFolder = calls[call].kind == DiskCall::Kind::flush && calls[call].path.extension().empty();
        if (flushesFolder && number > 0) {
            for (const FolderContents& state : disk.afterPowerLoss())
                EXPECT_EQ(lastOf(state), number);
            ++rewritten;
        }
        if (call + 1 == callsUntil[number])
            ++number;
    }
    EXPECT_GE(rewritten, 1U);
}

} // namespace
} // namespace Tests
