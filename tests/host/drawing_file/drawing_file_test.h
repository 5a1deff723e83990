// The fixture of tests of drawing files.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>

#include "embedded/host/database/host_error.h"
#include "embedded/host/drawing_file/drawing_file.h"
#include "platform/host.h"
#include "support/drawing.h"
#include "support/drawing_files/drawing_sql.h"
#include "support/file_text.h"
#include "support/platform_test.h"
#include "support/temporary_folder.h"

namespace Tests {

using Embedded::DrawingAccess;
using Embedded::Expected;
using Embedded::LockWait;

inline LockWait waitOf(int milliseconds)
{
    LockWait wait;
    wait.longest = std::chrono::milliseconds(milliseconds);
    return wait;
}

/// What a load or a save came to, in one text: the status, and the message if there is one.
template <class T>
std::string outcome(const Expected<T>& result)
{
    return result ? "0" : std::to_string(result.error().status) + " " + result.error().text();
}

class DrawingFileTest : public PlatformTest {
protected:
    using Database = std::unique_ptr<QeDbDatabase>;

    /// The file has the drawing from now on. It does not wait for the disk.
    void given(const Drawing& drawing) const { writeFile(file, saveToBytes(*drawing.database())); }
    static Expected<Database> load(const std::filesystem::path& from, DrawingAccess access = DrawingAccess::sharing,
                                   int milliseconds = 0)
    {
        return Embedded::loadDrawing(from, access, waitOf(milliseconds));
    }
    /// Null when the drawing cannot be loaded.
    static Expected<void> load(const std::filesystem::path& from, Database& database,
                               DrawingAccess access = DrawingAccess::sharing, int milliseconds = 0)
    {
        database.reset(); // a connection of this process may hold a lock
        return load(from, access, milliseconds).map([&](Database&& opened) { database = std::move(opened); });
    }
    Database loaded(DrawingAccess access = DrawingAccess::sharing) const
    {
        Database database;
        EXPECT_EQ(outcome(load(file, database, access)), "0");
        return database;
    }
    Expected<void> save(QeDbDatabase& database) const
    {
        return Embedded::saveDrawing(database, file, database.drawingVersion(), Embedded::Overwriting::refused,
                                     waitOf(0));
    }
    std::string inFile() const { return drawingContents(*loaded()); }
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
