#include "embedded/base/staged_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <string>

#include "embedded/base/posix/file_descriptor.h"
#include "embedded/base/system_error.h"

namespace Embedded {
namespace {

namespace fs = std::filesystem;

constexpr int kMostNames = 100;
constexpr std::string_view kPrefix = ".saving-";
constexpr std::string_view kSuffix = ".tmp";

fs::path folderOf(const fs::path& file)
{
    return file.has_parent_path() ? file.parent_path() : fs::path(".");
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

/// Whether the name still leads to the open file.
bool isNameOf(const fs::path& name, int descriptor)
{
    struct stat named {};
    struct stat opened {};
    return ::lstat(name.c_str(), &named) == 0 && ::fstat(descriptor, &opened) == 0 && named.st_dev == opened.st_dev &&
           named.st_ino == opened.st_ino;
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

/// Removes from the folder what killed processes of this user have left there. What cannot be removed stays.
void removeAbandoned(const fs::path& folder)
{
    std::error_code error;
    for (fs::directory_iterator entry(folder, error); !error && entry != fs::directory_iterator();
         entry.increment(error)) {
        if (isTemporaryName(entry->path().filename().native()))
            removeIfAbandoned(entry->path());
    }
}

/// So that a new name in the folder outlasts a loss of power. The new file is in place by now, and a failure that was
/// reported would be taken for the old one being there still.
void flushFolder(const fs::path& folder)
{
    const FileDescriptor opened(retried([&] { return ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); }));
    if (opened.isOpen())
        static_cast<void>(retried([&] { return ::fsync(opened.get()); })); // see above
}

} // namespace

/// The file is locked as long as it lives, which tells it from one that was left behind by a process that was killed.
class StagedFile::Imp {
public:
    Imp(const fs::path& folder, mode_t mode)
    {
        constexpr int kFlags = O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW;
        for (int attempt = 0; attempt < kMostNames; ++attempt) {
            const fs::path fresh = temporaryName(folder);
            descriptor = FileDescriptor(retried([&] { return ::open(fresh.c_str(), kFlags, mode); }));
            if (!descriptor.isOpen() && errno == EEXIST)
                continue;
            if (!descriptor.isOpen())
                throw std::system_error(lastSystemError());
            name = fresh;
            // Before it is locked, another process may take it for one that was left behind.
            if (!isLockedByAnother(descriptor.get()) && isNameOf(fresh, descriptor.get()))
                return;
            remove();
        }
        throw std::system_error(std::make_error_code(std::errc::file_exists));
    }
    ~Imp() { remove(); }

    void remove()
    {
        if (!name.empty())
            static_cast<void>(::unlink(name.c_str())); // nothing more can be done about it
        name.clear();
    }

    void copyAccess(const struct stat& original) const
    {
        // Only a privileged user can keep another user's file that user's own; for all others it becomes theirs.
        const auto nobody = static_cast<uid_t>(-1);
        const bool kept = ::fchown(descriptor.get(), original.st_uid, original.st_gid) == 0 ||
                          ::fchown(descriptor.get(), nobody, original.st_gid) == 0;
        static_cast<void>(kept); // see above
        if (::fchmod(descriptor.get(), original.st_mode & 07777) != 0)
            throw std::system_error(lastSystemError());
    }

    /// The file stays open, and so locked, until it has its name. What closing could still report, this has.
    void flush() const
    {
        if (retried([&] { return ::fsync(descriptor.get()); }) != 0)
            throw std::system_error(lastSystemError());
    }

    FileDescriptor descriptor;
    fs::path name;
};

StagedFile::StagedFile(const fs::path& target)
{
    struct stat original {};
    const mode_t mode = ::stat(target.c_str(), &original) == 0 ? 0600 : 0666;
    removeAbandoned(folderOf(target));
    imp_ = std::make_unique<Imp>(folderOf(target), mode);
}

StagedFile::~StagedFile() = default;

const fs::path& StagedFile::name() const
{
    return imp_->name;
}

void StagedFile::write(std::string_view bytes)
{
    while (!bytes.empty()) {
        const ssize_t written = retried([&] { return ::write(imp_->descriptor.get(), bytes.data(), bytes.size()); });
        if (written < 0)
            throw std::system_error(lastSystemError());
        if (written == 0)
            throw std::system_error(std::make_error_code(std::errc::no_space_on_device));
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
}

bool StagedFile::publishAs(const fs::path& target)
{
    imp_->flush();
    if (::link(imp_->name.c_str(), target.c_str()) != 0) {
        if (errno == EEXIST)
            return false;
        throw std::system_error(lastSystemError());
    }
    imp_->remove();
    flushFolder(folderOf(target));
    return true;
}

void StagedFile::replace(const fs::path& target)
{
    struct stat original {};
    if (::stat(target.c_str(), &original) == 0)
        imp_->copyAccess(original);
    imp_->flush();
    if (::rename(imp_->name.c_str(), target.c_str()) != 0)
        throw std::system_error(lastSystemError());
    imp_->name.clear();
    flushFolder(folderOf(target));
}

} // namespace Embedded
