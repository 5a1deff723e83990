#include "embedded/foundation/atomic_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <optional>
#include <system_error>

#include "embedded/foundation/display_name.h"
#include "embedded/foundation/faults.h"
#include "embedded/foundation/posix/file_descriptor.h"

namespace Embedded {
namespace {

namespace fs = std::filesystem;

constexpr int kMostLinks = 40;
constexpr int kMostNames = 100; // tried for the temporary file

/// What stopped the write; thrown from step to step, so that the temporary file goes away on every road.
struct WriteFailure {
    int error = 0; // of errno
    int plannedCode = 0;
};

void strike(std::string_view step, int error)
{
    if (const auto fault = Faults::strike(step, 0))
        throw WriteFailure{error, *fault};
}

/// A file under a name of its own, removed unless it was given its final one.
class TemporaryFile {
public:
    TemporaryFile(const fs::path& folder, mode_t mode);
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile()
    {
        if (!name_.empty())
            static_cast<void>(::unlink(name_.c_str())); // nothing more can be done about it
    }

    void copyAccess(const struct stat& original);
    void write(std::string_view text);
    void flush();
    void renameTo(const fs::path& target);

private:
    FileDescriptor descriptor_;
    fs::path name_;
};

/// Short whatever the target is called, which may have the longest name that the folder allows.
fs::path temporaryName(const fs::path& folder)
{
    static std::atomic<unsigned> counter{0};
    return folder / (".saving-" + std::to_string(::getpid()) + "-" + std::to_string(counter++) + ".tmp");
}

TemporaryFile::TemporaryFile(const fs::path& folder, mode_t mode)
{
    strike("writeFileAtomically.open", EACCES);
    for (int attempt = 0; attempt < kMostNames; ++attempt) {
        const fs::path name = temporaryName(folder);
        descriptor_ = FileDescriptor(
            retried([&] { return ::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, mode); }));
        if (descriptor_.get() >= 0) {
            name_ = name;
            return;
        }
        if (errno != EEXIST)
            break;
    }
    throw WriteFailure{errno};
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

void TemporaryFile::flush()
{
    strike("writeFileAtomically.sync", EIO);
    if (retried([&] { return ::fsync(descriptor_.get()); }) != 0 || !descriptor_.close())
        throw WriteFailure{errno};
}

void TemporaryFile::renameTo(const fs::path& target)
{
    strike("writeFileAtomically.rename", EIO);
    if (::rename(name_.c_str(), target.c_str()) != 0)
        throw WriteFailure{errno};
    name_.clear();
}

/// The file that is to be replaced: where the links lead, whether or not there is one yet.
fs::path targetOf(fs::path file)
{
    std::error_code error;
    for (int links = 0; fs::is_symlink(fs::symlink_status(file, error)); ++links) {
        const fs::path destination = fs::read_symlink(file, error);
        if (error || links == kMostLinks)
            throw WriteFailure{error ? error.value() : ELOOP};
        file = file.parent_path() / destination;
    }
    return file;
}

/// How to make the new file like the one it replaces; nothing when there is none.
std::optional<struct stat> originalAt(const fs::path& target)
{
    struct stat original {};
    if (::stat(target.c_str(), &original) != 0) {
        if (errno == ENOENT)
            return std::nullopt;
        throw WriteFailure{errno};
    }
    if (!S_ISREG(original.st_mode))
        throw WriteFailure{S_ISDIR(original.st_mode) ? EISDIR : EINVAL};
    if (::faccessat(AT_FDCWD, target.c_str(), W_OK, AT_EACCESS) != 0)
        throw WriteFailure{errno};
    return original;
}

/// So that the new name outlasts a loss of power. The new file is in place by now, and a failure that was reported
/// would be taken for the old one being there still.
void flushFolder(const fs::path& folder)
{
    const FileDescriptor opened(retried([&] { return ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); }));
    if (opened.get() >= 0)
        static_cast<void>(retried([&] { return ::fsync(opened.get()); })); // see above
}

void replace(const fs::path& target, std::string_view text)
{
    const std::optional<struct stat> original = originalAt(target);
    const fs::path folder = target.has_parent_path() ? target.parent_path() : fs::path(".");
    TemporaryFile temporary(folder, original ? 0600 : 0666);
    temporary.write(text);
    if (original)
        temporary.copyAccess(*original);
    temporary.flush();
    temporary.renameTo(target);
    flushFolder(folder);
}

} // namespace

std::optional<ReplacementFailure> replaceFile(const fs::path& file, std::string_view text)
{
    try {
        replace(targetOf(file), text);
        return std::nullopt;
    } catch (const WriteFailure& failure) {
        return ReplacementFailure{failure.error, failure.plannedCode,
                                  displayName(file) +
                                      ": cannot be written: " + std::generic_category().message(failure.error)};
    }
}

std::optional<ReplacementFailure> recoverReplacedFile(const fs::path& /*file*/)
{
    return std::nullopt;
}

} // namespace Embedded
