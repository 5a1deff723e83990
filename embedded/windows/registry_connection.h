// The registry's file, which is opened when it is first needed and stays open.
#pragma once

#include <sys/types.h>

#include <cstdint>
#include <filesystem>

#include "embedded/base/sqlite.h"
#include "platform/windows.h"

namespace Embedded {

class RegistryConnection {
public:
    RegistryConnection(std::filesystem::path file, bool creates);

    SQLite::Database& database() { return database_; }
    bool isUsableFor(const std::filesystem::path& file) const;
    /// Whether another process opened the file, which has forked this one since.
    bool isInherited() const;
    /// Whether the file was deleted or replaced since it was opened.
    bool isStale() const;
    /// Grows with each change of the file, whichever process makes it; within a transaction.
    unsigned version() const;
    /// Within a transaction: whether the file holds a registry; it may have no bytes yet. Throws ErrorException for a
    /// file that is something else, too new or damaged.
    bool hasRegistry();
    /// Within a transaction: makes the table in a file of no bytes.
    void createTable();

    /// Which value was enumerated last.
    struct Place {
        std::int64_t key = 0;
        DWORD index = 0;
        std::int64_t row = 0;
        unsigned version = 0;
    };
    Place place;

private:
    void checkContent();

    std::filesystem::path file_;
    pid_t process_;
    SQLite::Database database_;
    bool isChecked_ = false;
};

/// The connection to the file in use. Null when there is no file and none is to be made.
RegistryConnection* connectRegistry(bool creates);
/// The next call opens the file and checks all of it.
void disconnectRegistry();
/// How all connections wait for other processes.
LockWait& registryWait();

} // namespace Embedded
