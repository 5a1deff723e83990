// The fixture of tests that open drawing files.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>

#include "embedded/host/drawing_file.h"
#include "host/drawing_file_samples.h"
#include "platform/host.h"
#include "support/platform_test.h"
#include "support/temporary_folder.h"

namespace Tests {

/// Drawing files that are opened.
class DrawingFileLoad : public PlatformTest {
protected:
    void expectRefusal(const std::filesystem::path& path, Qeapp::ErrorStatus status, const std::string& reason)
    {
        auto database = std::make_unique<QeDbDatabase>();
        const Embedded::FileResult result = Embedded::loadDrawing(path, database);
        EXPECT_EQ(result.status, status);
        EXPECT_EQ(result.message.substr(0, path.string().size() + 2 + reason.size()), path.string() + ": " + reason);
        EXPECT_EQ(database, nullptr);
    }
    void expectRefusalOf(const std::string& text, Qeapp::ErrorStatus status, const std::string& reason)
    {
        put(file, text);
        expectRefusal(file, status, reason);
        EXPECT_EQ(contentsOf(file), text) << "touched by the attempt";
    }

    TemporaryFolder folder;
    std::filesystem::path file = folder.path() / "a.qedb";
};

} // namespace Tests
