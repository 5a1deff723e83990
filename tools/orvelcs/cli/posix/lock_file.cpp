#include "orvelcs/cli/lock_file.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include "embedded/base/path.h"
#include "embedded/base/posix/file_descriptor.h"
#include "embedded/base/system_error.h"
#include "orvelcs/cli/failure.h"

namespace Orvelcs {
namespace {

constexpr int kFlags = O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW;

[[noreturn]] void fail(const std::filesystem::path& file, const char* what)
{
    throw Failure(Embedded::displayName(file),
                  std::string(what) + ": " + Embedded::systemMessage(Embedded::lastSystemError()));
}

} // namespace

LockFile::LockFile(const std::filesystem::path& file)
    : file_(file), handle_(Embedded::retried([&] { return ::open(file.c_str(), kFlags, 0666); }))
{
    if (handle_ < 0)
        fail(file_, "cannot be opened");
}

LockFile::~LockFile()
{
    static_cast<void>(::close(static_cast<int>(handle_))); // nothing was written to it
}

bool LockFile::tryLock()
{
    if (Embedded::retried([&] { return ::flock(static_cast<int>(handle_), LOCK_EX | LOCK_NB); }) == 0)
        return true;
    if (errno != EWOULDBLOCK)
        fail(file_, "cannot be locked");
    return false;
}

} // namespace Orvelcs
