// The fixture of tests that interrupt a save at each of its calls.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "saves/posix/disk_calls.h"
#include "saves/posix/save_scenario.h"
#include "saves/posix/simulated_disk.h"
#include "support/case_name.h"
#include "support/platform_test.h"
#include "support/temporary_folder.h"

namespace Tests {

class InterruptedSave : public PlatformTest, public testing::WithParamInterface<SaveScenario> {
protected:
    using Names = std::vector<std::string>;

    InterruptedSave()
    {
        std::filesystem::create_directory(prepared_);
        scenario().prepare(prepared_);
        folder = newFolder();
        initialContents = contentsBelow(folder);
        before = scenario().content(folder);
        {
            const WatchedFolder watched(folder);
            EXPECT_TRUE(scenario().save(folder));
            calls = watched.calls();
        }
        after = scenario().content(folder);
        names = namesBelow(folder);
        EXPECT_NE(after, before);
        EXPECT_FALSE(after.starts_with("refused"));
    }

    static const SaveScenario& scenario() { return GetParam(); }

    /// Creates a new folder as it is before the save.
    std::filesystem::path newFolder()
    {
        const std::filesystem::path copy = folder_.path() / std::to_string(++number_);
        std::filesystem::copy(prepared_, copy,
                              std::filesystem::copy_options::recursive | std::filesystem::copy_options::copy_symlinks);
        return copy;
    }
    static Names namesBelow(const std::filesystem::path& place)
    {
        Names names;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(place))
            names.push_back(entry.path().lexically_relative(place));
        std::sort(names.begin(), names.end());
        return names;
    }
    std::string describeCall(std::size_t call) const
    {
        return "call " + std::to_string(call) + ", " +
               (call < calls.size() ? std::string(calls[call].name) : "a later one");
    }

    std::string before;
    std::string after;
    /// A save without an interruption: its folder, the contents of the folder before, the calls, and the names
    /// afterwards.
    std::filesystem::path folder;
    FolderContents initialContents;
    std::vector<DiskCall> calls;
    Names names;

private:
    TemporaryFolder folder_;
    std::filesystem::path prepared_ = folder_.path() / "prepared";
    int number_ = 0;
};

} // namespace Tests
