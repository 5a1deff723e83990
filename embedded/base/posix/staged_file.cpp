#include "embedded/base/staged_file_imp.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdint>
#include <string>

#include "embedded/base/parse_number.h"
#include "embedded/base/posix/file_descriptor.h"
#include "embedded/base/system_error.h"

namespace Embedded {
namespace {

namespace fs = std::filesystem;

constexpr int kMaxAttempts = 100;
constexpr int kMaxLinks = 40;
constexpr std::string_view kPrefix = ".saving-";
constexpr std::string_view kSuffix = ".tmp";

fs::path folderOf(const fs::path& file)
{
    return file.has_parent_path() ? file.parent_path() : fs::path(".");
}

/// The name does not contain the target's, which may be as long as the folder allows.
fs::path newTemporaryName(const fs::path& folder)
{
    static std::atomic<unsigned> counter{0};
    return folder /
           (std::string(kPrefix) + std::to_string(::getpid()) + "-" + std::to_string(counter++) + std::string(kSuffix));
}

bool isNumber(std::string_view text)
{
    return parseInteger<std::uint64_t>(text).has_value();
}

bool isTemporaryName(std::string_view name)
{
    if (!name.starts_with(kPrefix) || !name.ends_with(kSuffix) || name.size() < kPrefix.size() + kSuffix.size())
        return false;
    name = name.substr(kPrefix.size(), name.size() - kPrefix.size() - kSuffix.size());
    const std::size_t dash = name.find('-');
    return dash != std::string_view::npos && isNumber(name.substr(0, dash)) && isNumber(name.substr(dash + 1));
}

/// Returns whether the name still belongs to the open file: another process may have removed or replaced it.
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

/// A process that saves holds a lock on its file, which ends with the process in whatever way. Other containers and
/// machines, to which its process number means nothing, see the lock too. On a disk without locks nothing is removed.
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

/// Removes the temporary files in the folder that belong to killed processes of this user. What cannot be removed
/// stays.
void removeAbandoned(const fs::path& folder)
{
    std::error_code error;
    for (fs::directory_iterator entry(folder, error); !error && entry != fs::directory_iterator();
         entry.increment(error)) {
        if (isTemporaryName(entry->path().filename().native()))
            removeIfAbandoned(entry->path());
    }
}

/// Makes a new name in the folder outlast a loss of power. Reports no failure, because the new file is in place already
/// and a failure would mean that the old one is still there.
void flushFolder(const fs::path& folder)
{
    const FileDescriptor opened(retried([&] { return ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); }));
    if (opened.isOpen())
        static_cast<void>(retried([&] { return ::fsync(opened.get()); })); // a failure is not reported
}

/// Holds a lock on the file, which tells it from the file of a killed process.
class SystemStagedFile final : public StagedFileImp {
public:
    explicit SystemStagedFile(const fs::path& file) : StagedFileImp(file)
    {
        struct stat original {};
        const mode_t mode = ::stat(target_.c_str(), &original) == 0 ? 0600 : 0666;
        const fs::path folder = folderOf(target_);
        removeAbandoned(folder);
        constexpr int kFlags = O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW;
        for (int attempt = 0; attempt < kMaxAttempts; ++attempt) {
            const fs::path fresh = newTemporaryName(folder);
            descriptor_ = FileDescriptor(retried([&] { return ::open(fresh.c_str(), kFlags, mode); }));
            if (!descriptor_.isOpen() && errno == EEXIST)
                continue;
            if (!descriptor_.isOpen())
                throw std::system_error(lastSystemError());
            name_ = fresh;
            // Until it is locked, another process may remove it as the file of a killed process.
            if (!isLockedByAnother(descriptor_.get()) && isNameOf(fresh, descriptor_.get()))
                return;
            remove();
        }
        throw std::system_error(std::make_error_code(std::errc::file_exists));
    }
    ~SystemStagedFile() override { remove(); }

    void write(std::string_view bytes) override
    {
        while (!bytes.empty()) {
            const ssize_t written = retried([&] { return ::write(descriptor_.get(), bytes.data(), bytes.size()); });
            if (written < 0)
                throw std::system_error(lastSystemError());
            if (written == 0)
                throw std::system_error(std::make_error_code(std::errc::no_space_on_device));
            bytes.remove_prefix(static_cast<std::size_t>(written));
        }
    }

    bool publish() override
    {
        flush();
        if (::link(name_.c_str(), target_.c_str()) != 0) {
            if (errno == EEXIST)
                return false;
            throw std::system_error(lastSystemError());
        }
        remove();
        flushFolder(folderOf(target_));
        return true;
    }

    void replaceTarget() override
    {
        struct stat original {};
        if (::stat(target_.c_str(), &original) == 0)
            copyAccess(original);
        flush();
        if (::rename(name_.c_str(), target_.c_str()) != 0)
            throw std::system_error(lastSystemError());
        name_.clear();
        flushFolder(folderOf(target_));
    }

private:
    void remove()
    {
        if (!name_.empty())
            static_cast<void>(::unlink(name_.c_str())); // nothing more can be done about it
        name_.clear();
    }

    void copyAccess(const struct stat& original) const
    {
        // Only a privileged user can give a file to another user. Any other user becomes the owner of the file.
        constexpr auto kSameUser = static_cast<uid_t>(-1);
        const bool isOwnerKept = ::fchown(descriptor_.get(), original.st_uid, original.st_gid) == 0 ||
                                 ::fchown(descriptor_.get(), kSameUser, original.st_gid) == 0;
        static_cast<void>(isOwnerKept); // a file that gets a new owner has been replaced all the same
        if (::fchmod(descriptor_.get(), original.st_mode & 07777) != 0)
            throw std::system_error(lastSystemError());
    }

    /// The file stays open, and so locked, until it has its final name. Closing it later reports nothing new.
    void flush() const
    {
        if (retried([&] { return ::fsync(descriptor_.get()); }) != 0)
            throw std::system_error(lastSystemError());
    }

    FileDescriptor descriptor_;
};

} // namespace

fs::path followLinks(fs::path file)
{
    std::error_code error;
    for (int links = 0;; ++links) {
        const fs::file_type type = fs::symlink_status(file, error).type();
        if (type == fs::file_type::none) // an unreadable link would itself be replaced
            throw std::system_error(error);
        if (type != fs::file_type::symlink)
            return file;
        const fs::path destination = fs::read_symlink(file, error);
        if (error || links == kMaxLinks)
            throw std::system_error(error ? error : std::make_error_code(std::errc::too_many_symbolic_link_levels));
        file = file.parent_path() / destination;
    }
}

void requireReplaceable(const fs::path& file)
{
    struct stat found {};
    if (::stat(file.c_str(), &found) != 0) {
        if (errno != ENOENT)
            throw std::system_error(lastSystemError());
        return;
    }
    if (!S_ISREG(found.st_mode))
        throw std::system_error(
            std::make_error_code(S_ISDIR(found.st_mode) ? std::errc::is_a_directory : std::errc::invalid_argument));
    if (::faccessat(AT_FDCWD, file.c_str(), W_OK, AT_EACCESS) != 0)
        throw std::system_error(lastSystemError());
}

std::unique_ptr<StagedFileImp> StagedFileImp::create(const fs::path& target)
{
    return std::make_unique<SystemStagedFile>(target);
}

} // namespace Embedded
