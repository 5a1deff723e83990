// Makes the disk fail in a program that loads this library first. Its functions replace those of the system. They count
// the calls that change something below ORVEL_DISK_FOLDER. At call number ORVEL_DISK_CALL, counted from 0,
// ORVEL_DISK_WAY says what happens:
//   killed   the process ends before the call
//   halfway  the process ends in the middle of a write, before any other call
//   full     this call and all later ones that need room fail
#include <dlfcn.h>
#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <cstdarg>
#include <cstdlib>
#include <string>
#include <string_view>

namespace {

enum class Needs { room, nothing };

template <class Function>
Function* systemFunction(const char* name)
{
    return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

std::string_view setting(const char* name)
{
    const char* const value = std::getenv(name);
    return value != nullptr ? value : "";
}

/// A relative path starts in the working folder.
bool isBelowFolder(const std::string& path)
{
    std::array<char, PATH_MAX> folder{};
    const bool isRelative = !path.starts_with('/') && ::getcwd(folder.data(), folder.size()) != nullptr;
    const std::string whole = isRelative ? std::string(folder.data()) + '/' + path : path;
    return !setting("ORVEL_DISK_FOLDER").empty() && whole.starts_with(setting("ORVEL_DISK_FOLDER"));
}

bool isBelowFolder(int descriptor)
{
    std::array<char, PATH_MAX> path{};
    const std::string link = "/proc/self/fd/" + std::to_string(descriptor);
    return ::readlink(link.c_str(), path.data(), path.size() - 1) > 0 && isBelowFolder(std::string(path.data()));
}

[[noreturn]] void killProcess()
{
    static_cast<void>(::kill(::getpid(), SIGKILL)); // does not return
    ::_exit(1);
}

bool isFailingCall()
{
    static int calls = 0;
    const int failingCall = std::atoi(setting("ORVEL_DISK_CALL").data());
    const int call = calls++;
    return call == failingCall || (call > failingCall && setting("ORVEL_DISK_WAY") == "full");
}

/// Whether the call fails, because the disk is full. Kills the process if the setting says so.
bool fails(Needs needs)
{
    if (!isFailingCall())
        return false;
    if (setting("ORVEL_DISK_WAY") != "full")
        killProcess();
    errno = ENOSPC;
    return needs == Needs::room;
}

int openFile(const char* name, const char* path, int flags, mode_t mode)
{
    auto* const function = systemFunction<int(const char*, int, ...)>(name);
    if ((flags & (O_CREAT | O_TRUNC)) != 0 && isBelowFolder(std::string(path)) && fails(Needs::room))
        return -1;
    return function(path, flags, mode);
}

mode_t readMode(int flags, va_list& arguments)
{
    return (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
}

} // namespace

extern "C" {

__attribute__((visibility("default"))) int open(const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = readMode(flags, arguments);
    va_end(arguments);
    return openFile("open", path, flags, mode);
}

__attribute__((visibility("default"))) int open64(const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = readMode(flags, arguments);
    va_end(arguments);
    return openFile("open64", path, flags, mode);
}

__attribute__((visibility("default"))) ssize_t write(int descriptor, const void* bytes, size_t length)
{
    static auto* const function = systemFunction<ssize_t(int, const void*, size_t)>("write");
    if (!isBelowFolder(descriptor))
        return function(descriptor, bytes, length);
    if (isFailingCall()) {
        if (setting("ORVEL_DISK_WAY") == "full") {
            errno = ENOSPC;
            return -1;
        }
        if (setting("ORVEL_DISK_WAY") == "halfway")
            static_cast<void>(function(descriptor, bytes, length / 2));
        killProcess();
    }
    return function(descriptor, bytes, length);
}

__attribute__((visibility("default"))) int fsync(int descriptor)
{
    static auto* const function = systemFunction<int(int)>("fsync");
    return isBelowFolder(descriptor) && fails(Needs::room) ? -1 : function(descriptor);
}

__attribute__((visibility("default"))) int mkdir(const char* path, mode_t mode) noexcept
{
    static auto* const function = systemFunction<int(const char*, mode_t)>("mkdir");
    return isBelowFolder(std::string(path)) && fails(Needs::room) ? -1 : function(path, mode);
}

__attribute__((visibility("default"))) int rename(const char* from, const char* to) noexcept
{
    static auto* const function = systemFunction<int(const char*, const char*)>("rename");
    return isBelowFolder(std::string(to)) && fails(Needs::nothing) ? -1 : function(from, to);
}

__attribute__((visibility("default"))) int unlink(const char* path) noexcept
{
    static auto* const function = systemFunction<int(const char*)>("unlink");
    return isBelowFolder(std::string(path)) && fails(Needs::nothing) ? -1 : function(path);
}

__attribute__((visibility("default"))) int unlinkat(int folder, const char* path, int flags) noexcept
{
    static auto* const function = systemFunction<int(int, const char*, int)>("unlinkat");
    return isBelowFolder(folder) && fails(Needs::nothing) ? -1 : function(folder, path, flags);
}

} // extern "C"
