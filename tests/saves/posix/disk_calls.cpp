#include "saves/posix/disk_calls.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <signal.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <map>
#include <optional>
#include <utility>

namespace Tests {
namespace {

namespace fs = std::filesystem;
using Kind = DiskCall::Kind;
using Way = Interruption::Way;

struct OpenFile {
    fs::path path;
    std::size_t position = 0;
};

struct Watch {
    fs::path folder;
    Interruption interruption;
    std::vector<DiskCall> calls;
    std::map<int, OpenFile> openFiles;
};

constinit Watch* watch = nullptr; // the libraries call before anything here is constructed

/// The function behind the program's own.
template <class Function>
Function* next(const char* name)
{
    return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

bool isWatched(const fs::path& path)
{
    const std::string& folder = watch->folder.native();
    return path.native().starts_with(folder);
}

OpenFile* openFile(int descriptor)
{
    if (watch == nullptr)
        return nullptr;
    const auto found = watch->openFiles.find(descriptor);
    return found != watch->openFiles.end() ? &found->second : nullptr;
}

[[noreturn]] void endHere()
{
    static_cast<void>(::kill(::getpid(), SIGKILL)); // which does not return
    ::_exit(1);
}

/// The way for the call that comes now.
Way wayOfThis()
{
    const Interruption& planned = watch->interruption;
    const std::size_t number = watch->calls.size();
    if (planned.way == Way::failsFromHereOn)
        return number >= planned.call ? Way::fails : Way::none;
    return number == planned.call ? planned.way : Way::none;
}

int errorOf(Way way)
{
    return way == Way::interrupted ? EINTR : watch->interruption.error;
}

void happenMeanwhile()
{
    Watch* const watching = std::exchange(watch, nullptr);
    watching->interruption.other();
    watch = watching;
}

/// Makes the call, or what is to happen in its place. `perform` takes how many of the bytes to write.
template <class Perform>
auto made(DiskCall call, Perform perform) -> decltype(perform(std::size_t{}))
{
    const std::size_t length = call.bytes.size();
    const Way way = wayOfThis();
    const bool writes = call.kind == Kind::write;
    watch->calls.push_back(std::move(call));
    if (way == Way::meanwhile)
        happenMeanwhile();
    if (way == Way::fails || way == Way::interrupted) {
        errno = errorOf(way);
        return -1;
    }
    const std::size_t part = !writes                     ? length
                             : way == Way::killedHalfway ? length / 2
                             : way == Way::writesOne     ? 1
                             : way == Way::writesNone    ? 0
                                                         : length;
    const auto result = perform(part);
    if (way == Way::killedHalfway || way == Way::killedAfter)
        endHere();
    DiskCall& recorded = watch->calls.back();
    recorded.done = result >= 0;
    recorded.bytes.resize(writes ? part : 0);
    return result;
}

DiskCall callOn(const OpenFile& file, Kind kind, std::string_view name)
{
    DiskCall call;
    call.kind = kind;
    call.name = name;
    call.path = file.path;
    return call;
}

DiskCall callOn(const char* path, Kind kind, std::string_view name)
{
    return callOn(OpenFile{path}, kind, name);
}

/// A call on a descriptor that needs no more than that.
template <class Perform>
int madeOn(int descriptor, Kind kind, std::string_view name, Perform perform)
{
    const OpenFile* file = openFile(descriptor);
    return file != nullptr ? made(callOn(*file, kind, name), [&](std::size_t) { return perform(); }) : perform();
}

template <class Perform>
int madeOn(const char* path, Kind kind, std::string_view name, Perform perform)
{
    return watch != nullptr && isWatched(path) ? made(callOn(path, kind, name), [&](std::size_t) { return perform(); })
                                               : perform();
}

int openedAs(const char* path, int flags, mode_t mode)
{
    static auto* const function = next<int(const char*, int, ...)>("open");
    const Kind kind = (flags & O_CREAT) != 0 ? Kind::create : Kind::open;
    const int descriptor = madeOn(path, kind, "open", [&] { return function(path, flags, mode); });
    if (descriptor >= 0 && watch != nullptr && isWatched(path))
        watch->openFiles[descriptor] = {path, 0};
    return descriptor;
}

ssize_t written(OpenFile& file, const void* bytes, std::size_t length, std::optional<off_t> offset, int descriptor)
{
    static auto* const atOffset = next<ssize_t(int, const void*, std::size_t, off_t)>("pwrite");
    static auto* const inTurn = next<ssize_t(int, const void*, std::size_t)>("write");
    DiskCall call = callOn(file, Kind::write, offset ? "pwrite" : "write");
    call.bytes.assign(static_cast<const char*>(bytes), length);
    call.offset = offset ? static_cast<std::size_t>(*offset) : file.position;
    const ssize_t result = made(std::move(call), [&](std::size_t part) {
        return offset ? atOffset(descriptor, bytes, part, *offset) : inTurn(descriptor, bytes, part);
    });
    if (result > 0 && !offset)
        file.position += static_cast<std::size_t>(result);
    return result;
}

} // namespace

WatchedFolder::WatchedFolder(const fs::path& folder, const Interruption& interruption)
{
    watch = new Watch{folder, interruption, {}, {}};
}

WatchedFolder::~WatchedFolder()
{
    delete std::exchange(watch, nullptr);
}

const std::vector<DiskCall>& WatchedFolder::calls() const
{
    return watch->calls;
}

} // namespace Tests

#define STANDS_IN_FRONT extern "C" __attribute__((visibility("default")))

using namespace Tests;

STANDS_IN_FRONT int open(const char* path, int flags, ...)
{
    std::va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    return openedAs(path, flags, mode);
}

STANDS_IN_FRONT ssize_t write(int descriptor, const void* bytes, std::size_t length)
{
    static auto* const function = next<ssize_t(int, const void*, std::size_t)>("write");
    OpenFile* const file = openFile(descriptor);
    return file != nullptr ? written(*file, bytes, length, std::nullopt, descriptor)
                           : function(descriptor, bytes, length);
}

STANDS_IN_FRONT ssize_t pwrite(int descriptor, const void* bytes, std::size_t length, off_t offset)
{
    static auto* const function = next<ssize_t(int, const void*, std::size_t, off_t)>("pwrite");
    OpenFile* const file = openFile(descriptor);
    return file != nullptr ? written(*file, bytes, length, offset, descriptor)
                           : function(descriptor, bytes, length, offset);
}

STANDS_IN_FRONT int ftruncate(int descriptor, off_t length) noexcept
{
    static auto* const function = next<int(int, off_t)>("ftruncate");
    const OpenFile* const file = openFile(descriptor);
    if (file == nullptr)
        return function(descriptor, length);
    DiskCall call = callOn(*file, DiskCall::Kind::truncate, "ftruncate");
    call.offset = static_cast<std::size_t>(length);
    return made(std::move(call), [&](std::size_t) { return function(descriptor, length); });
}

/// The end of a process loses nothing, so nothing need be waited for.
STANDS_IN_FRONT int fsync(int descriptor)
{
    return madeOn(descriptor, DiskCall::Kind::flush, "fsync", [] { return 0; });
}

STANDS_IN_FRONT int fchmod(int descriptor, mode_t mode) noexcept
{
    static auto* const function = next<int(int, mode_t)>("fchmod");
    return madeOn(descriptor, DiskCall::Kind::access, "fchmod", [&] { return function(descriptor, mode); });
}

STANDS_IN_FRONT int fchown(int descriptor, uid_t user, gid_t group) noexcept
{
    static auto* const function = next<int(int, uid_t, gid_t)>("fchown");
    return madeOn(descriptor, DiskCall::Kind::access, "fchown", [&] { return function(descriptor, user, group); });
}

STANDS_IN_FRONT int flock(int descriptor, int operation) noexcept
{
    static auto* const function = next<int(int, int)>("flock");
    return madeOn(descriptor, DiskCall::Kind::access, "flock", [&] { return function(descriptor, operation); });
}

STANDS_IN_FRONT int fstat(int descriptor, struct stat* found) noexcept
{
    static auto* const function = next<int(int, struct stat*)>("fstat");
    return madeOn(descriptor, DiskCall::Kind::look, "fstat", [&] { return function(descriptor, found); });
}

/// One that fails has closed all the same.
STANDS_IN_FRONT int close(int descriptor)
{
    static auto* const function = next<int(int)>("close");
    const OpenFile* const file = openFile(descriptor);
    if (file == nullptr)
        return function(descriptor);
    const DiskCall call = callOn(*file, DiskCall::Kind::close, "close");
    watch->openFiles.erase(descriptor);
    bool closed = false;
    const int result = made(call, [&](std::size_t) {
        closed = true;
        return function(descriptor);
    });
    if (!closed) {
        const int error = errno;
        static_cast<void>(function(descriptor)); // its failure is what the test wants
        errno = error;
    }
    return result;
}

STANDS_IN_FRONT int rename(const char* from, const char* to) noexcept
{
    static auto* const function = next<int(const char*, const char*)>("rename");
    if (watch == nullptr || !isWatched(from))
        return function(from, to);
    DiskCall call = callOn(from, DiskCall::Kind::rename, "rename");
    call.target = to;
    return made(std::move(call), [&](std::size_t) { return function(from, to); });
}

STANDS_IN_FRONT int unlink(const char* path) noexcept
{
    static auto* const function = next<int(const char*)>("unlink");
    return madeOn(path, DiskCall::Kind::remove, "unlink", [&] { return function(path); });
}

STANDS_IN_FRONT int mkdir(const char* path, mode_t mode) noexcept
{
    static auto* const function = next<int(const char*, mode_t)>("mkdir");
    return madeOn(path, DiskCall::Kind::makeFolder, "mkdir", [&] { return function(path, mode); });
}

STANDS_IN_FRONT int stat(const char* path, struct stat* found) noexcept
{
    static auto* const function = next<int(const char*, struct stat*)>("stat");
    return madeOn(path, DiskCall::Kind::look, "stat", [&] { return function(path, found); });
}

STANDS_IN_FRONT int lstat(const char* path, struct stat* found) noexcept
{
    static auto* const function = next<int(const char*, struct stat*)>("lstat");
    return madeOn(path, DiskCall::Kind::look, "lstat", [&] { return function(path, found); });
}

STANDS_IN_FRONT int faccessat(int folder, const char* path, int mode, int flags) noexcept
{
    static auto* const function = next<int(int, const char*, int, int)>("faccessat");
    return madeOn(path, DiskCall::Kind::look, "faccessat", [&] { return function(folder, path, mode, flags); });
}
