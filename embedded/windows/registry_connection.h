// The connection to the registry's file. It is opened at first use and stays open.
#pragma once

#include <sys/types.h>

#include <cstdint>
#include <filesystem>

#include "embedded/base/sqlite.h"
#include "platform/win32.h"

namespace Embedded {

class RegistryConnection {
public:
    RegistryConnection(std::filesystem::path file, bool creates);

    SQLite::Database& database() { return database_; }
    bool isUsableFor(const std::filesystem::path& file) const;
    /// Returns whether this process inherited the connection from its parent by a fork.
    bool isInherited() const;
    /// Returns whether the file was deleted or replaced after it was opened.
    bool isStale() const;
    /// Grows with each change of the file by any process. Requires a transaction.
    unsigned version() const;
    /// Returns false for an empty file. Throws ErrorException for a file that is not a registry, too new or damaged.
    /// Requires a transaction.
    bool hasRegistry();
    /// Creates the table in an empty file. Requires a transaction.
    void createTable();

    /// The value that was enumerated last, from which the next one is found without counting again.
    struct EnumeratedValue {
        std::int64_t key = 0;
        DWORD index = 0;
        std::int64_t row = 0;
        unsigned version = 0;
    };
    EnumeratedValue lastEnumerated;

private:
    void checkContent();

    std::filesystem::path file_;
    pid_t process_;
    SQLite::Database database_;
    bool isChecked_ = false;
};

/// The connection to the file in use; null if there is no file and `creates` is false. Throws ErrorException.
RegistryConnection* connectRegistry(bool creates);
/// Closes the connection. The next call opens the file and checks all of it.
void disconnectRegistry();
/// How all connections wait for other processes.
LockWait& registryWait();

} // namespace Embedded
