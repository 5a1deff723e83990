// The fixture of tests of drawing files.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>

#include "embedded/host/database/host_error.h"
#include "embedded/host/drawing_file/drawing_file.h"
#include "host/database/drawing_test.h"
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

inline LockWait lockWait(int milliseconds)
{
    LockWait wait;
    wait.longest = std::chrono::milliseconds(milliseconds);
    return wait;
}

/// The status of a load or a save as text, followed by the message of a failure.
template <class T>
std::string outcome(const Expected<T>& result)
{
    return result ? "0" : std::to_string(result.error().status) + " " + result.error().text();
}

class DrawingFileTest : public PlatformTest {
protected:
    using Database = std::unique_ptr<QeDbDatabase>;

    /// Writes the file without waiting for the disk.
    void writeDrawing(const Drawing& drawing) const { writeFile(file, saveToBytes(*drawing.database())); }
    static Expected<Database> load(const std::filesystem::path& from, DrawingAccess access = DrawingAccess::sharing)
    {
        return Embedded::loadDrawing(from, access, lockWait(0));
    }
    /// Sets `database` to null when the drawing cannot be loaded.
    static Expected<void> load(const std::filesystem::path& from, Database& database,
                               DrawingAccess access = DrawingAccess::sharing)
    {
        database.reset(); // its connection may hold a lock
        return load(from, access).map([&](Database&& opened) { database = std::move(opened); });
    }
    /// Loads a drawing and closes it again.
    static std::string tryToLoad(const std::filesystem::path& from, DrawingAccess access = DrawingAccess::sharing)
    {
        const Expected<Database> database = load(from, access);
        EXPECT_TRUE(!database || *database != nullptr);
        return outcome(database);
    }
    Database loadFile(DrawingAccess access = DrawingAccess::sharing) const
    {
        Database database;
        EXPECT_EQ(outcome(load(file, database, access)), "0");
        return database;
    }
    Expected<void> save(QeDbDatabase& database) const
    {
        return Embedded::saveDrawing(database, file, database.drawingVersion(), Embedded::Overwriting::refused,
                                     lockWait(0));
    }
    static std::string contentsOfFile(const std::filesystem::path& path)
    {
        Database database;
        EXPECT_EQ(outcome(load(path, database)), "0");
        return drawingContents(*database);
    }
    std::string fileContents() const { return contentsOfFile(file); }

    static Opened<QeDbDictionary> openNamedObjects(QeDbDatabase& database, QeDb::OpenMode mode = QeDb::kForRead)
    {
        QeDbDictionary* dictionary = nullptr;
        EXPECT_EQ(database.getNamedObjectsDictionary(dictionary, mode), Qeapp::eOk);
        return Opened<QeDbDictionary>(dictionary);
    }

    /// The outcome of a call that refuses a file for that reason.
    static std::string refusal(const std::filesystem::path& path, Qeapp::ErrorStatus status, const std::string& reason)
    {
        return std::to_string(static_cast<int>(status)) + " " + path.string() + ": " + reason;
    }
    std::string refusal(Qeapp::ErrorStatus status, const std::string& reason) const
    {
        return refusal(file, status, reason);
    }
    std::string lockedRefusal() const { return refusal(Qeapp::eFileLocked, kLocked); }
    std::string changedRefusal() const
    {
        return refusal(Qeapp::eFileChanged, "was changed by another program since it was opened; open it again");
    }

    static constexpr const char* kLocked = "another process is using it and did not release it in time";
    TemporaryFolder folder;
    std::filesystem::path file = folder.path() / "a.qedb";
};

} // namespace Tests
