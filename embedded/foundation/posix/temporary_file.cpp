#include "embedded/foundation/posix/temporary_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdio>
#include <string>
#include <system_error>

#include "embedded/foundation/faults.h"

namespace Embedded {
namespace {

namespace fs = std::filesystem;

constexpr int kMostNames = 100; // tried for the temporary file
constexpr std::string_view kPrefix = ".saving-";
constexpr std::string_view kSuffix = ".tmp";

void strike(std::string_view step, int error)
{
    if (const auto fault = Faults::strike(step, 0))
        throw WriteFailure{error, *fault};
}

/// Short whatever the target is called, which may have the longest name that the folder allows.
fs::path temporaryName(const fs::path& folder)
{
    static std::atomic<unsigned> counter{0};
    return folder /
           (std::string(kPrefix) + std::to_string(::getpid()) + "-" + std::to_string(counter++) + std::string(kSuffix));
}

bool isNumber(std::string_view text)
{
    return !text.empty() &&
           std::all_of(text.begin(), text.end(), [](char digit) { return '0' <= digit && digit <= '9'; });
}

bool isTemporaryName(std::string_view name)
{
    if (!name.starts_with(kPrefix) || !name.ends_with(kSuffix) || name.size() < kPrefix.size() + kSuffix.size())
        return false;
    name = name.substr(kPrefix.size(), name.size() - kPrefix.size() - kSuffix.size());
    const std::size_t dash = name.find('-');
    return dash != std::string_view::npos && isNumber(name.substr(0, dash)) && isNumber(name.substr(dash + 1));
}

bool isSameFile(const struct stat& left, const struct stat& right)
{
    return left.st_dev == right.st_dev && left.st_ino == right.st_ino;
}

/// Whether the name still leads to the open file.
bool isNameOf(const fs::path& name, int descriptor)
{
    struct stat named {};
    struct stat opened {};
    return ::lstat(name.c_str(), &named) == 0 && ::fstat(descriptor, &opened) == 0 && isSameFile(named, opened);
}

bool isLockedByAnother(int descriptor)
{
    return retried([&] { return ::flock(descriptor, LOCK_EX | LOCK_NB); }) != 0 && errno == EWOULDBLOCK;
}

/// The lock ends with the process that saves, in whatever way, and is seen from other containers and machines too,
/// where a process number says nothing. On a disk without locks nothing is removed.
void removeIfAbandoned(const fs::path& name)
{
    struct stat found {};
    if (::lstat(name.c_str(), &found) != 0 || !S_ISREG(found.st_mode) || found.st_uid != ::geteuid())
        return;
    const FileDescriptor opened(
        retried([&] { return ::open(name.c_str(), O_WRONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK); }));
    if (!opened.isOpen() || retried([&] { return ::flock(opened.get(), LOCK_EX | LOCK_NB); }) != 0)
        return;
    if (isNameOf(name, opened.get()))
        static_cast<void>(::unlink(name.c_str())); // the next save tries again
}

} // namespace

// The new file is in place by now, and a failure that was reported would be taken for the old one being there still.
void flushFolder(const fs::path& folder)
{
    const FileDescriptor opened(retried([&] { return ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); }));
    if (opened.get() >= 0)
        static_cast<void>(retried([&] { return ::fsync(opened.get()); })); // see above
}

TemporaryFile::TemporaryFile(const fs::path& folder, mode_t mode)
{
    strike("writeFileAtomically.open", EACCES);
    for (int attempt = 0; attempt < kMostNames; ++attempt) {
        const fs::path name = temporaryName(folder);
        descriptor_ = FileDescriptor(
            retried([&] { return ::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, mode); }));
        if (!descriptor_.isOpen() && errno == EEXIST)
            continue;
        if (!descriptor_.isOpen())
            throw WriteFailure{errno};
        name_ = name;
        // Before it is locked, another process may take it for one that was left behind.
        if (!isLockedByAnother(descriptor_.get()) && isNameOf(name, descriptor_.get()))
            return;
        removeUnderItsName();
    }
    throw WriteFailure{EEXIST};
}

TemporaryFile::~TemporaryFile()
{
    removeUnderItsName();
}

void TemporaryFile::removeUnderItsName()
{
    if (!name_.empty())
        static_cast<void>(::unlink(name_.c_str())); // nothing more can be done about it
    name_.clear();
}

void TemporaryFile::copyAccess(const struct stat& original)
{
    // Only a privileged user can keep another user's file that user's own; for all others it becomes theirs.
    const auto nobody = static_cast<uid_t>(-1);
    const bool kept = ::fchown(descriptor_.get(), original.st_uid, original.st_gid) == 0 ||
                      ::fchown(descriptor_.get(), nobody, original.st_gid) == 0;
    static_cast<void>(kept); // see above
    if (::fchmod(descriptor_.get(), original.st_mode & 07777) != 0)
        throw WriteFailure{errno};
}

void TemporaryFile::write(std::string_view text)
{
    strike("writeFileAtomically.write", ENOSPC);
    while (!text.empty()) {
        const ssize_t written = retried([&] { return ::write(descriptor_.get(), text.data(), text.size()); });
        if (written <= 0)
            throw WriteFailure{written < 0 ? errno : ENOSPC};
        text.remove_prefix(static_cast<std::size_t>(written));
    }
}

/// It stays open, and so locked, until it has its name. What closing could still report, this has.
void TemporaryFile::flush()
{
    strike("writeFileAtomically.sync", EIO);
    if (retried([&] { return ::fsync(descriptor_.get()); }) != 0)
        throw WriteFailure{errno};
}

void TemporaryFile::renameTo(const fs::path& target)
{
    strike("writeFileAtomically.rename", EIO);
    if (::rename(name_.c_str(), target.c_str()) != 0)
        throw WriteFailure{errno};
    name_.clear();
}

bool TemporaryFile::renameToNew(const fs::path& target)
{
    if (::link(name_.c_str(), target.c_str()) != 0) {
        if (errno == EEXIST)
            return false;
        throw WriteFailure{errno};
    }
    removeUnderItsName();
    return true;
}

void TemporaryFile::removeAbandoned(const fs::path& folder)
{
    std::error_code error;
    for (fs::directory_iterator entry(folder, error); !error && entry != fs::directory_iterator();
         entry.increment(error)) {
        if (isTemporaryName(entry->path().filename().native()))
            removeIfAbandoned(entry->path());
    }
}

} // namespace Embedded
