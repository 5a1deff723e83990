// Simulates what a disk may hold after a loss of power. Any part may be missing of the writes since the last flush of a
// file, and of the name changes since the last flush of their folder.
#pragma once

#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "saves/posix/disk_calls.h"

namespace Tests {

/// The contents of the files below a folder, by their relative names.
using FolderContents = std::map<std::string, std::string>;

class SimulatedDisk {
public:
    /// The initial contents count as flushed.
    SimulatedDisk(const std::filesystem::path& folder, const FolderContents& initialContents);

    void apply(const DiskCall& call);
    /// The contents that a running program sees.
    FolderContents visibleContents() const;
    /// Every state that the disk may have after a loss of power.
    std::set<FolderContents> statesAfterPowerLoss() const;

private:
    using Names = std::map<std::string, std::size_t>; // the number of the file by its name

    struct Change { // a change of a file's content
        bool truncates = false;
        std::size_t offset = 0; // or the new length
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
    std::set<std::string> possibleContents(const File& file) const;
    std::set<Names> possibleNames() const;
    void addStates(const Names& names, std::set<FolderContents>& states) const;

    static void apply(const NameChange& change, Names& names);
    static void apply(const Change& change, std::string& content);

    std::filesystem::path folder_;
    std::vector<File> files_;
    Names names_;        // the names that a running program sees
    Names flushedNames_; // the names that are certainly on the disk
    std::vector<NameChange> pendingNames_;
};

/// Replaces the folder by one with these contents.
void makeFolder(const std::filesystem::path& folder, const FolderContents& contents);
/// The contents of the files below the folder.
FolderContents contentsBelow(const std::filesystem::path& folder);

} // namespace Tests
