// The fixture of tests that interrupt the save of a drawing at each call by which SQLite reaches the disk.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "saves/posix/disk_vfs.h"
#include "saves/posix/drawing_scenario.h"
#include "support/platform_test.h"
#include "support/temporary_folder.h"

namespace Tests {

class InterruptedDrawing : public PlatformTest, public testing::WithParamInterface<DrawingScenario> {
private:
    TemporaryFolder temporary_;
    std::vector<bool> looks_; // of each call, whether it only looks

protected:
    InterruptedDrawing()
    {
        prepare();
        before = drawingsIn(folder);
        {
            const WatchedDisk watched(folder);
            EXPECT_TRUE(scenario().save(folder));
            calls = watched.calls();
            looks_ = watched.looks();
        }
        after = drawingsIn(folder);
        EXPECT_TRUE(after != before);
        EXPECT_EQ(after.find("refused"), std::string::npos);
    }

    static const DrawingScenario& scenario() { return GetParam(); }
    /// The numbers of the calls that are interrupted: most are alike, so some of those that only look, and all others.
    /// Sanitizers slow everything down, and see as much at fewer.
    std::vector<std::size_t> interruptedCalls(bool withLooks) const
    {
        constexpr bool isSlow = ORVEL_TEXT_STRIDE > 1;
        std::vector<std::size_t> numbers;
        for (std::size_t number = 0; number < looks_.size(); ++number) {
            const std::size_t stride = looks_[number] ? (isSlow ? 97 : 23) : (isSlow ? 9 : 1);
            if ((withLooks || !looks_[number]) && (number % stride == 0 || number + 3 >= looks_.size()))
                numbers.push_back(number);
        }
        return numbers;
    }
    /// Puts into the folder what is there before the save, and nothing else.
    void prepare() const { makeFolder(folder, scenario().held()); }
    std::string found() const { return drawingsIn(folder); }
    std::string foundInACopy() const
    {
        const std::filesystem::path copy = temporary_.path() / "copy";
        makeFolder(copy, contentsBelow(folder));
        return drawingsIn(copy);
    }
    /// Also where the interrupted one has saved already, unless that was to make something new.
    void expectTheNextSaveToSucceed(bool isDone) const
    {
        const WatchedDisk watched(folder);
        EXPECT_EQ(scenario().save(folder), !isDone || scenario().canRepeat);
        if (!isDone) {
            EXPECT_TRUE(found() == after);
        }
        EXPECT_EQ(found().find("refused"), std::string::npos);
        expectNothingLeft();
    }
    void expectNothingLeft() const
    {
        for (const auto& entry : std::filesystem::directory_iterator(folder))
            EXPECT_EQ(entry.path().extension(), ".qedb") << entry.path();
    }

    std::filesystem::path folder = temporary_.path() / "drawings";
    std::string before;
    std::string after;
    /// Of a save that nothing interrupts.
    std::vector<DiskCall> calls;
};

} // namespace Tests
