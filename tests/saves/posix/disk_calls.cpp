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
using Effect = Interruption::Effect;

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

constinit Watch* watch = nullptr; // constinit, since libraries make calls before constructors run here

/// The function of the system that a function of this program replaces.
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

Effect effectOnNextCall()
{
    const Interruption& planned = watch->interruption;
    const std::size_t number = watch->calls.size();
    if (planned.effect == Effect::failsFromHereOn)
        return number >= planned.call ? Effect::fails : Effect::none;
    return number == planned.call ? planned.effect : Effect::none;
}

int errorFor(Effect effect)
{
    return effect == Effect::interrupted ? EINTR : watch->interruption.error;
}

void runMeanwhile()
{
    Watch* const watching = std::exchange(watch, nullptr);
    watching->interruption.other();
    watch = watching;
}

/// Makes the call or interrupts it, and records it. `perform` gets the number of bytes to write.
template <class Perform>
auto callOrInterruptPosix(DiskCall call, Perform perform) -> decltype(perform(std::size_t{}))
{
    const std::size_t length = call.bytes.size();
    const Effect effect = effectOnNextCall();
    const bool writes = call.kind == Kind::write;
    watch->calls.push_back(std::move(call));
    if (effect == Effect::meanwhile)
        runMeanwhile();
    if (effect == Effect::fails || effect == Effect::interrupted) {
        errno = errorFor(effect);
        return -1;
    }
    const std::size_t part = !writes                           ? length
                             : effect == Effect::killedHalfway ? length / 2
                             : effect == Effect::writesOne     ? 1
                             : effect == Effect::writesNone    ? 0
                                                               : length;
    const auto result = perform(part);
    if (effect == Effect::killedHalfway || effect == Effect::killedAfter)
        killThisProcess();
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

/// Makes a call on a descriptor that has no further arguments to record.
template <class Perform>
int callOrInterruptOn(int descriptor, Kind kind, std::string_view name, Perform perform)
{
    const OpenFile* file = openFile(descriptor);
    return file != nullptr ? callOrInterruptPosix(callOn(*file, kind, name), [&](std::size_t) { return perform(); })
                           : perform();
}

template <class Perform>
int callOrInterruptOn(const char* path, Kind kind, std::string_view name, Perform perform)
{
    return watch != nullptr && isWatched(path)
               ? callOrInterruptPosix(callOn(path, kind, name), [&](std::size_t) { return perform(); })
               : perform();
}

int openAndRecord(const char* path, int flags, mode_t mode)
{
    static auto* const function = next<int(const char*, int, ...)>("open");
    const Kind kind = (flags & O_CREAT) != 0 ? Kind::create : Kind::open;
    const int descriptor = callOrInterruptOn(path, kind, "open", [&] { return function(path, flags, mode); });
    if (descriptor >= 0 && watch != nullptr && isWatched(path))
        watch->openFiles[descriptor] = {path, 0};
    return descriptor;
}

ssize_t writeAndRecord(OpenFile& file, const void* bytes, std::size_t length, std::optional<off_t> offset,
                       int descriptor)
{
    static auto* const atOffset = next<ssize_t(int, const void*, std::size_t, off_t)>("pwrite");
    static auto* const inTurn = next<ssize_t(int, const void*, std::size_t)>("write");
    DiskCall call = callOn(file, Kind::write, offset ? "pwrite" : "write");
    call.bytes.assign(static_cast<const char*>(bytes), length);
    call.offset = offset ? static_cast<std::size_t>(*offset) : file.position;
    const ssize_t result = callOrInterruptPosix(std::move(call), [&](std::size_t part) {
        return offset ? atOffset(descriptor, bytes, part, *offset) : inTurn(descriptor, bytes, part);
    });
    if (result > 0 && !offset)
        file.position += static_cast<std::size_t>(result);
    return result;
}

} // namespace

void killThisProcess()
{
    static_cast<void>(::kill(::getpid(), SIGKILL)); // does not return
    ::_exit(1);
}

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

#define REPLACES_SYSTEM_CALL extern "C" __attribute__((visibility("default")))

using namespace Tests;

REPLACES_SYSTEM_CALL int open(const char* path, int flags, ...)
{
    std::va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    return openAndRecord(path, flags, mode);
}

REPLACES_SYSTEM_CALL ssize_t write(int descriptor, const void* bytes, std::size_t length)
{
    static auto* const function = next<ssize_t(int, const void*, std::size_t)>("write");
    OpenFile* const file = openFile(descriptor);
    return file != nullptr ? writeAndRecord(*file, bytes, length, std::nullopt, descriptor)
                           : function(descriptor, bytes, length);
}

REPLACES_SYSTEM_CALL ssize_t pwrite(int descriptor, const void* bytes, std::size_t length, off_t offset)
{
    static auto* const function = next<ssize_t(int, const void*, std::size_t, off_t)>("pwrite");
    OpenFile* const file = openFile(descriptor);
    return file != nullptr ? writeAndRecord(*file, bytes, length, offset, descriptor)
                           : function(descriptor, bytes, length, offset);
}

REPLACES_SYSTEM_CALL int ftruncate(int descriptor, off_t length) noexcept
{
    static auto* const function = next<int(int, off_t)>("ftruncate");
    const OpenFile* const file = openFile(descriptor);
    if (file == nullptr)
        return function(descriptor, length);
    DiskCall call = callOn(*file, DiskCall::Kind::truncate, "ftruncate");
    call.offset = static_cast<std::size_t>(length);
    return callOrInterruptPosix(std::move(call), [&](std::size_t) { return function(descriptor, length); });
}

/// Does not wait for the disk: a killed process loses nothing that it has written.
REPLACES_SYSTEM_CALL int fsync(int descriptor)
{
    return callOrInterruptOn(descriptor, DiskCall::Kind::flush, "fsync", [] { return 0; });
}

REPLACES_SYSTEM_CALL int fchmod(int descriptor, mode_t mode) noexcept
{
    static auto* const function = next<int(int, mode_t)>("fchmod");
    return callOrInterruptOn(descriptor, DiskCall::Kind::access, "fchmod", [&] { return function(descriptor, mode); });
}

REPLACES_SYSTEM_CALL int fchown(int descriptor, uid_t user, gid_t group) noexcept
{
    static auto* const function = next<int(int, uid_t, gid_t)>("fchown");
    return callOrInterruptOn(descriptor, DiskCall::Kind::access, "fchown",
                             [&] { return function(descriptor, user, group); });
}

REPLACES_SYSTEM_CALL int flock(int descriptor, int operation) noexcept
{
    static auto* const function = next<int(int, int)>("flock");
    return callOrInterruptOn(descriptor, DiskCall::Kind::access, "flock",
                             [&] { return function(descriptor, operation); });
}

REPLACES_SYSTEM_CALL int fstat(int descriptor, struct stat* status) noexcept
{
    static auto* const function = next<int(int, struct stat*)>("fstat");
    return callOrInterruptOn(descriptor, DiskCall::Kind::query, "fstat", [&] { return function(descriptor, status); });
}

/// Closes the descriptor even when the call fails.
REPLACES_SYSTEM_CALL int close(int descriptor)
{
    static auto* const function = next<int(int)>("close");
    const OpenFile* const file = openFile(descriptor);
    if (file == nullptr)
        return function(descriptor);
    const DiskCall call = callOn(*file, DiskCall::Kind::close, "close");
    watch->openFiles.erase(descriptor);
    bool closed = false;
    const int result = callOrInterruptPosix(call, [&](std::size_t) {
        closed = true;
        return function(descriptor);
    });
    if (!closed) {
        const int error = errno;
        static_cast<void>(function(descriptor)); // the test wants the failure
        errno = error;
    }
    return result;
}

REPLACES_SYSTEM_CALL int rename(const char* from, const char* to) noexcept
{
    static auto* const function = next<int(const char*, const char*)>("rename");
    if (watch == nullptr || !isWatched(from))
        return function(from, to);
    DiskCall call = callOn(from, DiskCall::Kind::rename, "rename");
    call.target = to;
    return callOrInterruptPosix(std::move(call), [&](std::size_t) { return function(from, to); });
}

REPLACES_SYSTEM_CALL int unlink(const char* path) noexcept
{
    static auto* const function = next<int(const char*)>("unlink");
    return callOrInterruptOn(path, DiskCall::Kind::remove, "unlink", [&] { return function(path); });
}

REPLACES_SYSTEM_CALL int mkdir(const char* path, mode_t mode) noexcept
{
    static auto* const function = next<int(const char*, mode_t)>("mkdir");
    return callOrInterruptOn(path, DiskCall::Kind::makeFolder, "mkdir", [&] { return function(path, mode); });
}

REPLACES_SYSTEM_CALL int stat(const char* path, struct stat* status) noexcept
{
    static auto* const function = next<int(const char*, struct stat*)>("stat");
    return callOrInterruptOn(path, DiskCall::Kind::query, "stat", [&] { return function(path, status); });
}

REPLACES_SYSTEM_CALL int lstat(const char* path, struct stat* status) noexcept
{
    static auto* const function = next<int(const char*, struct stat*)>("lstat");
    return callOrInterruptOn(path, DiskCall::Kind::query, "lstat", [&] { return function(path, status); });
}

REPLACES_SYSTEM_CALL int faccessat(int folder, const char* path, int mode, int flags) noexcept
{
    static auto* const function = next<int(int, const char*, int, int)>("faccessat");
    return callOrInterruptOn(path, DiskCall::Kind::query, "faccessat",
                             [&] { return function(folder, path, mode, flags); });
}
