// What a disk may hold after a loss of power: of what was written since the last flush of a file, and of the names that
// were changed since the last flush of their folder, any part may be missing.
#pragma once

#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "saves/posix/disk_calls.h"

namespace Tests {

/// The files below a folder, by their names in it, and their contents.
using FolderContents = std::map<std::string, std::string>;

class SimulatedDisk {
public:
    /// What the folder held, has long been written.
    SimulatedDisk(const std::filesystem::path& folder, const FolderContents& held);

    void apply(const DiskCall& call);
    /// What a program sees that runs on.
    FolderContents seen() const;
    /// Each state in which the disk may be found.
    std::set<FolderContents> afterPowerLoss() const;

private:
    using Names = std::map<std::string, std::size_t>; // to the number of the file

    struct Change { // of a file's content
        bool truncates = false;
        std::size_t offset = 0; // or the length that is left
        std::string bytes;
    };
    struct File {
        std::string flushed;
        std::vector<Change> pending;
    };
    struct NameChange {
        std::string folder;
        std::string removed; // empty for none
        std::string added;
        std::size_t file = 0;
    };

    std::string nameOf(const std::filesystem::path& path) const;
    void changeName(NameChange change);
    void flush(const std::string& name);
    std::set<std::string> contentsOf(const File& file) const;
    std::set<Names> possibleNames() const;
    void addStates(const Names& names, std::set<FolderContents>& states) const;

    static void apply(const NameChange& change, Names& names);
    static void apply(const Change& change, std::string& content);

    std::filesystem::path folder_;
    std::vector<File> files_;
    Names names_;        // as a running program sees them
    Names flushedNames_; // as they surely are on the disk
    std::vector<NameChange> pendingNames_;
};

/// Makes the folder hold exactly that.
void makeFolder(const std::filesystem::path& folder, const FolderContents& contents);
/// What a folder holds.
FolderContents contentsBelow(const std::filesystem::path& folder);

} // namespace Tests
