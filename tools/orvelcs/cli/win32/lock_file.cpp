#include "orvelcs/cli/lock_file.h"

#include <windows.h>

#include <string>

#include "embedded/base/path.h"
#include "embedded/base/system_error.h"
#include "orvelcs/cli/failure.h"

namespace Orvelcs {
namespace {

[[noreturn]] void fail(const std::filesystem::path& file, const char* what)
{
    throw Failure(Embedded::displayName(file),
                  std::string(what) + ": " + Embedded::systemMessage(Embedded::lastSystemError()));
}

HANDLE openShared(const std::filesystem::path& file)
{
    return CreateFileW(Embedded::systemPath(file).c_str(), GENERIC_READ | GENERIC_WRITE,
                       FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
}

} // namespace

LockFile::LockFile(const std::filesystem::path& file)
    : file_(file), handle_(reinterpret_cast<std::intptr_t>(openShared(file)))
{
    if (reinterpret_cast<HANDLE>(handle_) == INVALID_HANDLE_VALUE)
        fail(file_, "cannot be opened");
}

LockFile::~LockFile()
{
    static_cast<void>(CloseHandle(reinterpret_cast<HANDLE>(handle_))); // nothing was written to it
}

bool LockFile::tryLock()
{
    OVERLAPPED beginning{};
    constexpr DWORD kAtOnce = LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY;
    if (LockFileEx(reinterpret_cast<HANDLE>(handle_), kAtOnce, 0, 1, 0, &beginning) != 0)
        return true;
    const DWORD error = GetLastError();
    if (error != ERROR_LOCK_VIOLATION && error != ERROR_IO_PENDING)
        fail(file_, "cannot be locked");
    return false;
}

} // namespace Orvelcs
