// The fixture of tests of replaced files.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <string>

#include "embedded/base/path.h"
#include "embedded/base/staged_file.h"
#include "support/file_text.h"
#include "support/platform_test.h"
#include "support/temporary_folder.h"

namespace Tests {

class StagedFileTest : public PlatformTest {
protected:
    using Names = std::set<std::string>;

    /// Why the file was not replaced. Empty if it was.
    static std::string replace(const std::filesystem::path& target, const std::string& text)
    {
        const auto result = Embedded::replaceFile(target, text);
        if (result)
            return {};
        EXPECT_EQ(result.error().place, Embedded::displayName(target));
        return result.error().message;
    }
    static void write(const std::filesystem::path& target, const std::string& text)
    {
        EXPECT_EQ(replace(target, text), "");
    }
    static void expectRefusal(const std::filesystem::path& target, const std::string& reason)
    {
        EXPECT_EQ(replace(target, "new"), "cannot be written: " + reason);
    }

    TemporaryFolder folder;
    std::filesystem::path file = folder.path() / "a.txt";
};

} // namespace Tests
