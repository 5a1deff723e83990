// The registry's file: a line for each change, appended under a lock and read by whoever wants to know.
#pragma once

#include <sys/stat.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

#include "embedded/foundation/posix/file_descriptor.h"
#include "embedded/windows/registry_change.h"
#include "embedded/windows/registry_tree.h"
#include "embedded/windows/running_checksum.h"

namespace Embedded {

class RegistryJournal {
public:
    /// Without a path it is empty for ever.
    explicit RegistryJournal(std::filesystem::path file) : file_(std::move(file)) {}

    const std::filesystem::path& file() const { return file_; }
    /// What the file says now. Throws RegistryFailure; creates nothing.
    const RegistryTree& current();
    /// What the file says once no other process is changing it, until the scope ends. Throws RegistryFailure.
    class Change;

private:
    /// Where the next line begins, and what came before it.
    struct Place {
        std::size_t offset = 0;
        std::size_t lines = 0;
        RunningChecksum checksum;
    };

    void read();
    void forget();
    void readOn(int descriptor);
    void takeLine(std::string_view line);
    bool isAsSeen(const struct stat& found) const;
    bool isContinued(const struct stat& found) const;
    [[noreturn]] void refuse(const std::string& reason) const;
    void append(const RegistryChange& change);
    void writeNew(std::string_view text) const;
    void compactWhenWorthwhile();

    std::filesystem::path file_;
    FileDescriptor seenFile_; // kept open, so that no other file gets its number
    struct stat seen_ {};
    Place place_;
    RegistryTree tree_;
};

/// The lock, for the length of a scope.
class RegistryJournal::Change {
public:
    explicit Change(RegistryJournal& journal);

    const RegistryTree& tree() const { return journal_.tree_; }
    /// Once in a scope. Saved when it returns, and the tree is perhaps not read again yet. A RegistryFailure leaves
    /// file and tree as they were.
    void record(const RegistryChange& change);

private:
    RegistryJournal& journal_;
    FileDescriptor lock_;
};

} // namespace Embedded
