#include "saves/posix/simulated_disk.h"

#include "support/file_text.h"

namespace Tests {

namespace fs = std::filesystem;

SimulatedDisk::SimulatedDisk(const fs::path& folder, const FolderContents& initialContents) : folder_(folder)
{
    for (const auto& [name, content] : initialContents) {
        flushedNames_[name] = files_.size();
        files_.push_back({content, {}});
    }
    names_ = flushedNames_;
}

std::string SimulatedDisk::nameOf(const fs::path& path) const
{
    return path.lexically_relative(folder_);
}

void SimulatedDisk::apply(const NameChange& change, Names& names)
{
    if (!change.removed.empty())
        names.erase(change.removed);
    if (!change.added.empty())
        names[change.added] = change.file;
}

void SimulatedDisk::apply(const Change& change, std::string& content)
{
    const std::size_t end = change.offset + change.bytes.size();
    if (change.truncates || content.size() < end)
        content.resize(end, '\0');
    content.replace(change.offset, change.bytes.size(), change.bytes);
}

void SimulatedDisk::changeName(NameChange change)
{
    apply(change, names_);
    pendingNames_.push_back(std::move(change));
}

void SimulatedDisk::apply(const DiskCall& call)
{
    if (!call.done)
        return;
    const std::string name = nameOf(call.path);
    const std::string folder = nameOf(call.path.parent_path());
    const auto found = names_.find(name);
    if (call.kind == DiskCall::Kind::create && found == names_.end()) {
        files_.emplace_back();
        changeName({folder, "", name, files_.size() - 1});
    } else if (call.kind == DiskCall::Kind::rename) {
        changeName({folder, name, nameOf(call.target), found->second});
    } else if (call.kind == DiskCall::Kind::remove) {
        changeName({folder, name, "", 0});
    } else if (call.kind == DiskCall::Kind::write || call.kind == DiskCall::Kind::truncate) {
        files_.at(found->second).pending.push_back({call.kind == DiskCall::Kind::truncate, call.offset, call.bytes});
    } else if (call.kind == DiskCall::Kind::flush) {
        flush(name);
    }
}

/// Flushes a file, or the names in a folder.
void SimulatedDisk::flush(const std::string& name)
{
    if (const auto found = names_.find(name); found != names_.end()) {
        File& file = files_.at(found->second);
        for (const Change& change : file.pending)
            apply(change, file.flushed);
        file.pending.clear();
        return;
    }
    for (const NameChange& change : pendingNames_) {
        if (change.folder == name)
            apply(change, flushedNames_);
    }
    std::erase_if(pendingNames_, [&](const NameChange& change) { return change.folder == name; });
}

FolderContents SimulatedDisk::visibleContents() const
{
    FolderContents contents;
    for (const auto& [name, number] : names_) {
        std::string content = files_.at(number).flushed;
        for (const Change& change : files_.at(number).pending)
            apply(change, content);
        contents[name] = content;
    }
    return contents;
}

/// The first pending changes, any number of them. The last one is complete, has half its bytes, or zeros.
std::set<std::string> SimulatedDisk::possibleContents(const File& file) const
{
    std::set<std::string> contents{file.flushed};
    std::string content = file.flushed;
    for (const Change& change : file.pending) {
        Change half = change;
        half.bytes.resize(change.bytes.size() / 2);
        Change zeros = change;
        zeros.bytes.assign(change.bytes.size(), '\0');
        for (const Change& part : {half, zeros, change}) {
            std::string changed = content;
            apply(part, changed);
            contents.insert(std::move(changed));
        }
        apply(change, content);
    }
    return contents;
}

/// Each pending change of a name may have reached the disk or not.
std::set<SimulatedDisk::Names> SimulatedDisk::possibleNames() const
{
    std::set<Names> all{flushedNames_};
    for (const NameChange& change : pendingNames_) {
        std::set<Names> changed;
        for (Names names : all) {
            apply(change, names);
            changed.insert(std::move(names));
        }
        all.merge(changed);
    }
    return all;
}

void SimulatedDisk::addStates(const Names& names, std::set<FolderContents>& states) const
{
    std::set<FolderContents> combined{{}};
    for (const auto& [name, number] : names) {
        std::set<FolderContents> more;
        for (const std::string& content : possibleContents(files_.at(number))) {
            for (FolderContents state : combined) {
                state[name] = content;
                more.insert(std::move(state));
            }
        }
        combined = std::move(more);
    }
    states.merge(combined);
}

std::set<FolderContents> SimulatedDisk::statesAfterPowerLoss() const
{
    std::set<FolderContents> states;
    for (const Names& names : possibleNames())
        addStates(names, states);
    return states;
}

void makeFolder(const fs::path& folder, const FolderContents& contents)
{
    fs::remove_all(folder);
    fs::create_directories(folder);
    for (const auto& [name, content] : contents) {
        fs::create_directories((folder / name).parent_path());
        writeFile(folder / name, content);
    }
}

FolderContents contentsBelow(const fs::path& folder)
{
    FolderContents contents;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        if (!entry.is_regular_file())
            continue;
        contents[entry.path().lexically_relative(folder)] = readFile(entry.path());
    }
    return contents;
}

} // namespace Tests
