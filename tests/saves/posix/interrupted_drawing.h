// The fixture of tests that interrupt the save of a drawing at each call by which SQLite reaches the disk.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "saves/posix/disk_vfs.h"
#include "saves/posix/drawing_scenario.h"
#include "support/case_name.h"
#include "support/platform_test.h"
#include "support/temporary_folder.h"

namespace Tests {

class InterruptedDrawing : public PlatformTest, public testing::WithParamInterface<DrawingScenario> {
private:
    TemporaryFolder temporary_;
    std::vector<bool> isQuery_; // for each call

protected:
    InterruptedDrawing()
    {
        prepare();
        before = readDrawingsIn(folder);
        {
            const WatchedDisk watched(folder);
            EXPECT_TRUE(scenario().save(folder));
            calls = watched.calls();
            isQuery_ = watched.isQuery();
        }
        after = readDrawingsIn(folder);
        EXPECT_TRUE(after != before);
        EXPECT_EQ(after.find("refused"), std::string::npos);
    }

    static const DrawingScenario& scenario() { return GetParam(); }
    /// The numbers of the calls to interrupt: all calls that change something, and some of the many queries. Under
    /// sanitizers there are fewer.
    std::vector<std::size_t> interruptedCalls(bool withQueries) const
    {
        constexpr bool isSlow = ORVEL_TEXT_STRIDE > 1;
        std::vector<std::size_t> numbers;
        for (std::size_t number = 0; number < isQuery_.size(); ++number) {
            const std::size_t stride = isQuery_[number] ? (isSlow ? 97 : 23) : (isSlow ? 9 : 1);
            if ((withQueries || !isQuery_[number]) && (number % stride == 0 || number + 3 >= isQuery_.size()))
                numbers.push_back(number);
        }
        return numbers;
    }
    /// Restores the folder as it is before the save.
    void prepare() const { makeFolder(folder, scenario().initialContents()); }
    std::string readDrawings() const { return readDrawingsIn(folder); }
    /// Reads a copy, so that the next save is the first to open the files that were left.
    std::string readDrawingsInACopy() const
    {
        const std::filesystem::path copy = temporary_.path() / "copy";
        makeFolder(copy, contentsBelow(folder));
        return readDrawingsIn(copy);
    }
    /// The next save must succeed, unless the save is done already and creates a new file.
    void expectTheNextSaveToSucceed(bool isDone) const
    {
        const WatchedDisk watched(folder);
        EXPECT_EQ(scenario().save(folder), !isDone || scenario().canRepeat);
        if (!isDone) {
            EXPECT_TRUE(readDrawings() == after);
        }
        EXPECT_EQ(readDrawings().find("refused"), std::string::npos);
        expectNoJournal();
    }
    void expectNoJournal() const
    {
        for (const auto& entry : std::filesystem::directory_iterator(folder))
            EXPECT_EQ(entry.path().extension(), ".qedb") << entry.path();
    }

    std::filesystem::path folder = temporary_.path() / "drawings";
    std::string before;
    std::string after;
    /// The calls of a save without an interruption.
    std::vector<DiskCall> calls;
};

} // namespace Tests
