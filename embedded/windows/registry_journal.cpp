#include "embedded/windows/registry_journal.h"

#include <fcntl.h>
#include <sys/file.h>

#include <cerrno>
#include <system_error>

#include "embedded/foundation/atomic_file.h"
#include "embedded/foundation/display_name.h"
#include "embedded/windows/registry_failure.h"
#include "embedded/windows/registry_line.h"

namespace Embedded {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kChunkInBytes = 1U << 16;
constexpr std::size_t kSmallestWorthCompacting = 1U << 16;

LSTATUS codeOf(int error)
{
    return error == EACCES || error == EPERM || error == EROFS ? ERROR_ACCESS_DENIED : ERROR_REGISTRY_IO_FAILED;
}

[[noreturn]] void fail(const fs::path& file, const std::string& what, int error)
{
    throw RegistryFailure{codeOf(error),
                          displayName(file) + ": " + what + ": " + std::generic_category().message(error)};
}

bool isNothingThere(int error)
{
    return error == ENOENT || error == ENOTDIR;
}

/// Writes all of it at that place. As Windows does with a registry, it leaves it to the system when to write it on to
/// the disk: waiting for that with each of thousands of values would take minutes. No end of a process loses any of it.
bool writeAt(int descriptor, std::string_view bytes, std::size_t offset)
{
    while (!bytes.empty()) {
        const ssize_t written =
            retried([&] { return ::pwrite(descriptor, bytes.data(), bytes.size(), static_cast<off_t>(offset)); });
        if (written <= 0)
            return false;
        bytes.remove_prefix(static_cast<std::size_t>(written));
        offset += static_cast<std::size_t>(written);
    }
    return true;
}

FileDescriptor lockBeside(const fs::path& file)
{
    if (file.empty())
        throw RegistryFailure{ERROR_REGISTRY_IO_FAILED, "the user has no folder for a registry"};
    std::error_code error;
    fs::create_directories(file.parent_path(), error); // the lock cannot be made when this failed
    const fs::path name = file.native() + ".lock";
    FileDescriptor lock(retried([&] { return ::open(name.c_str(), O_RDONLY | O_CREAT | O_CLOEXEC, 0666); }));
    if (!lock.isOpen() || retried([&] { return ::flock(lock.get(), LOCK_EX); }) != 0)
        fail(name, "cannot be locked", errno);
    return lock;
}

} // namespace

void RegistryJournal::refuse(const std::string& reason) const
{
    throw RegistryFailure{ERROR_REGISTRY_CORRUPT, displayName(file_) + ": " + reason};
}

void RegistryJournal::forget()
{
    seenFile_ = FileDescriptor();
    seen_ = {};
    place_ = {};
    tree_ = {};
}

bool RegistryJournal::isAsSeen(const struct stat& found) const
{
    return isContinued(found) && found.st_size == seen_.st_size && found.st_mtim.tv_sec == seen_.st_mtim.tv_sec &&
           found.st_mtim.tv_nsec == seen_.st_mtim.tv_nsec;
}

/// Whether it is the file of the last time, and not one that took its name. One that grew has what it had in front;
/// where it has not, the checksum tells.
bool RegistryJournal::isContinued(const struct stat& found) const
{
    return seenFile_.isOpen() && found.st_dev == seen_.st_dev && found.st_ino == seen_.st_ino;
}

const RegistryTree& RegistryJournal::current()
{
    const bool began = seenFile_.isOpen();
    try {
        read();
    } catch (const RegistryFailure&) {
        forget();
        if (!began)
            throw;
        read(); // what was known of another state may be all that is wrong
    }
    return tree_;
}

void RegistryJournal::read()
{
    struct stat found {};
    if (file_.empty() || ::stat(file_.c_str(), &found) != 0) {
        if (!file_.empty() && !isNothingThere(errno))
            fail(file_, "cannot be read", errno);
        forget();
        return;
    }
    if (isAsSeen(found))
        return;
    if (!S_ISREG(found.st_mode))
        refuse(S_ISDIR(found.st_mode) ? "is a folder" : "is not a regular file");
    FileDescriptor opened(retried([&] { return ::open(file_.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK); }));
    if (!opened.isOpen() || ::fstat(opened.get(), &found) != 0)
        fail(file_, "cannot be read", errno);
    if (!isContinued(found) || found.st_size <= seen_.st_size)
        forget();
    seenFile_ = std::move(opened);
    readOn(seenFile_.get());
    seen_ = found;
    if (place_.lines == 0)
        refuse(found.st_size == 0 ? "is empty" : "line 1: this is not a registry file");
}

/// From the place on. What follows the last end of a line is a change that was never finished.
void RegistryJournal::readOn(int descriptor)
{
    std::string bytes;
    std::size_t searched = 0;
    for (std::size_t offset = place_.offset;;) {
        bytes.resize(searched + kChunkInBytes);
        const ssize_t count = retried(
            [&] { return ::pread(descriptor, bytes.data() + searched, kChunkInBytes, static_cast<off_t>(offset)); });
        if (count < 0)
            fail(file_, "cannot be read", errno);
        if (count == 0)
            return;
        offset += static_cast<std::size_t>(count);
        bytes.resize(searched + static_cast<std::size_t>(count));
        std::size_t begin = 0;
        for (std::size_t end = bytes.find('\n', searched); end != std::string::npos; end = bytes.find('\n', begin)) {
            takeLine(std::string_view(bytes).substr(begin, end - begin));
            begin = end + 1;
        }
        bytes.erase(0, begin);
        searched = bytes.size();
    }
}

void RegistryJournal::takeLine(std::string_view line)
{
    try {
        if (place_.lines == 0)
            checkHeader(line);
        const std::string_view json = unframed(line, place_.checksum);
        if (place_.lines > 0)
            tree_.apply(changeFrom(json), line.size() + 1);
    } catch (const RegistryDamage& damage) {
        refuse("line " + std::to_string(place_.lines + 1) + ": " + damage.reason);
    }
    place_.offset += line.size() + 1;
    ++place_.lines;
}

void RegistryJournal::writeNew(std::string_view text) const
{
    if (const auto failure = replaceFile(file_, text))
        throw RegistryFailure{codeOf(failure->error), failure->message};
}

void RegistryJournal::append(const RegistryChange& change)
{
    RunningChecksum checksum = place_.checksum;
    const std::string line = framedLine(jsonOf(change), checksum);
    const FileDescriptor opened(retried([&] { return ::open(file_.c_str(), O_WRONLY | O_CLOEXEC); }));
    if (!opened.isOpen())
        fail(file_, "cannot be written", errno);
    const auto end = static_cast<off_t>(place_.offset);
    // Behind the last line there may be the beginning of one whose writer came to an end before it did.
    if (retried([&] { return ::ftruncate(opened.get(), end); }) != 0 || !writeAt(opened.get(), line, place_.offset)) {
        const int error = errno;
        const int taken = ::ftruncate(opened.get(), end);
        static_cast<void>(taken); // a beginning that stays is passed over by readers and taken away by the next writer
        fail(file_, "cannot be written", error);
    }
    tree_.apply(change, line.size());
    place_ = {place_.offset + line.size(), place_.lines + 1, checksum};
    if (::fstat(opened.get(), &seen_) != 0)
        forget();
}

/// A change is one line only, whatever it makes superfluous; twice the useful length is where that ends.
void RegistryJournal::compactWhenWorthwhile()
{
    if (place_.offset < kSmallestWorthCompacting || place_.offset < 2 * tree_.liveBytes())
        return;
    RunningChecksum checksum;
    std::string text = framedLine(headerJson(), checksum);
    for (const RegistryChange& change : tree_.changes())
        text += framedLine(jsonOf(change), checksum);
    if (!replaceFile(file_, text)) // else the long file says the same, and the next change tries again
        forget();
}

RegistryJournal::Change::Change(RegistryJournal& journal) : journal_(journal), lock_(lockBeside(journal.file_))
{
    journal_.current();
}

void RegistryJournal::Change::record(const RegistryChange& change)
{
    if (journal_.seenFile_.isOpen()) {
        journal_.append(change);
        journal_.compactWhenWorthwhile();
        return;
    }
    RunningChecksum checksum;
    std::string text = framedLine(headerJson(), checksum);
    text += framedLine(jsonOf(change), checksum);
    journal_.writeNew(text);
    journal_.forget(); // the change is made, whether or not the file can be read now
}

} // namespace Embedded
