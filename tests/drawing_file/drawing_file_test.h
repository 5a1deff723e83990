// The fixture of tests of drawing files.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>

#include "embedded/host/drawing_file/drawing_file.h"
#include "platform/host.h"
#include "support/drawing.h"
#include "support/drawing_files/drawing_sql.h"
#include "support/file_text.h"
#include "support/platform_test.h"
#include "support/temporary_folder.h"

namespace Tests {

using Embedded::DrawingAccess;
using Embedded::FileResult;
using Embedded::LockWait;

inline LockWait waitOf(int milliseconds)
{
    LockWait wait;
    wait.longest = std::chrono::milliseconds(milliseconds);
    return wait;
}

/// What a load or a save came to, in one text: the status, and the message if there is one.
inline std::string outcome(const FileResult& result)
{
    return std::to_string(static_cast<int>(result.status)) + (result.message.empty() ? "" : " " + result.message);
}

class DrawingFileTest : public PlatformTest {
protected:
    using Database = std::unique_ptr<QeDbDatabase>;

    /// The file has the drawing from now on. It does not wait for the disk.
    void given(const Drawing& drawing) const { writeFile(file, savedInMemory(*drawing.database())); }
    static FileResult load(const std::filesystem::path& from, Database& database,
                           DrawingAccess access = DrawingAccess::sharing, int milliseconds = 0)
    {
        return Embedded::loadDrawing(from, database, access, waitOf(milliseconds));
    }
    Database loaded(DrawingAccess access = DrawingAccess::sharing) const
    {
        Database database;
        EXPECT_EQ(outcome(load(file, database, access)), "0");
        return database;
    }
    FileResult save(QeDbDatabase& database) const
    {
        return Embedded::saveDrawing(database, file, database.drawingVersion(), Embedded::Overwriting::refused,
                                     waitOf(0));
    }
    std::string inFile() const { return contentsOf(*loaded()); }
    static std::string number(Qeapp::ErrorStatus status) { return std::to_string(static_cast<int>(status)); }
    /// What a refusal of the file comes to.
    std::string refusal(Qeapp::ErrorStatus status, const std::string& reason) const
    {
        return number(status) + " " + file.string() + ": " + reason;
    }

    TemporaryFolder folder;
    std::filesystem::path file = folder.path() / "a.qedb";
};

} // namespace Tests
