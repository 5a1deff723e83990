#include "embedded/base/file_kind.h"

#include <gtest/gtest.h>

#include "support/file_text.h"
#include "support/temporary_folder.h"

namespace Tests {
namespace {

using Embedded::FileKind;
using Embedded::fileKind;

TEST(FileKindTest, ExistingName_HasItsKind)
{
    const TemporaryFolder folder;
    writeFile(folder.path() / "a.txt", "text");
    EXPECT_EQ(fileKind(folder.path() / "a.txt"), FileKind::regular);
    EXPECT_EQ(fileKind(folder.path()), FileKind::folder);
}

TEST(FileKindTest, MissingName_IsAnErrorWithTheSystemsReason)
{
    const TemporaryFolder folder;
    EXPECT_EQ(fileKind(folder.path() / "a.txt").error().message, "No such file or directory");
    EXPECT_EQ(fileKind(folder.path() / "missing" / "a.txt").error().message, "No such file or directory");
}

} // namespace
} // namespace Tests
