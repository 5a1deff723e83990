// The fixture of tests of files that are replaced whole or not at all.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <string>

#include "embedded/host/atomic_file.h"
#include "host/drawing_file_samples.h"
#include "support/platform_test.h"
#include "support/temporary_folder.h"

namespace Tests {

class AtomicFile : public PlatformTest {
protected:
    using Names = std::set<std::string>;

    static void write(const std::filesystem::path& target, const std::string& text)
    {
        const Embedded::FileResult result = Embedded::writeFileAtomically(target, text);
        EXPECT_EQ(result.message, "");
        EXPECT_EQ(result.status, Qeapp::eOk);
    }
    static void expectRefusal(const std::filesystem::path& target, const std::string& reason)
    {
        const Embedded::FileResult result = Embedded::writeFileAtomically(target, "new");
        EXPECT_EQ(result.status, Qeapp::eFileWriteFailed);
        EXPECT_EQ(result.message, target.string() + ": cannot be written: " + reason);
    }

    TemporaryFolder folder;
    std::filesystem::path file = folder.path() / "a.qedb";
};

} // namespace Tests
