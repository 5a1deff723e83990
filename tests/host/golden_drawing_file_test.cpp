// Drawing files written on one system, read and written again on this one.
#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>

#include "drawing_file_samples.h"
#include "embedded/host/drawing_file.h"
#include "platform/host.h"
#include "support/platform_test.h"
#include "support/temporary_folder.h"

namespace Tests {
namespace {

using namespace Embedded;
namespace fs = std::filesystem;

class GoldenDrawingFile : public PlatformTest, public testing::WithParamInterface<std::string> {
protected:
    TemporaryFolder folder;
    fs::path golden = fs::path(ORVEL_SOURCE_DIR) / "tests/host/golden" / (GetParam() + ".qedb");
};

TEST_P(GoldenDrawingFile, ComesBackByteForByte)
{
    std::unique_ptr<QeDbDatabase> database;
    const FileResult loaded = loadDrawing(golden, database);
    ASSERT_EQ(loaded.status, Qeapp::eOk) << loaded.message;
    const FileResult saved = saveDrawing(*database, folder.path() / "a.qedb", database->drawingVersion());
    ASSERT_EQ(saved.status, Qeapp::eOk) << saved.message;
    EXPECT_EQ(contentsOf(folder.path() / "a.qedb"), contentsOf(golden));
}

TEST_P(GoldenDrawingFile, EndsItsLinesWithALineFeedAlone)
{
    const std::string text = contentsOf(golden);
    EXPECT_TRUE(text.ends_with("}\n"));
    EXPECT_EQ(text.find('\r'), std::string::npos);
}

INSTANTIATE_TEST_SUITE_P(Each, GoldenDrawingFile,
                         testing::Values("version_21", "version_29", "version_33", "user_defined"),
                         [](const auto& drawing) { return drawing.param; });

} // namespace
} // namespace Tests
