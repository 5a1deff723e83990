#include "saves/posix/disk_vfs.h"

#include <string>
#include <string_view>
#include <utility>

#include <sqlite3.h>

namespace Tests {
namespace {

namespace fs = std::filesystem;
using Kind = DiskCall::Kind;
using Effect = Interruption::Effect;

struct DiskWatch {
    fs::path folder;
    Interruption interruption;
    std::vector<DiskCall> calls;
    std::vector<bool> isQuery;
};

constinit DiskWatch* diskWatch = nullptr;

/// A file of the system's VFS with its name.
struct WatchedFile {
    sqlite3_file file;
    sqlite3_file* real;
    const char* name; // SQLite keeps it as long as the file is open; null for a temporary file
    bool isJournal;
};

WatchedFile& watchedFile(sqlite3_file* file)
{
    return *reinterpret_cast<WatchedFile*>(file);
}

bool isFailing(std::size_t number)
{
    const Interruption& interruption = diskWatch->interruption;
    return (interruption.effect == Effect::fails && number == interruption.call) ||
           (interruption.effect == Effect::failsFromHereOn && number >= interruption.call);
}

bool hasEffect(Effect effect, std::size_t number)
{
    return diskWatch->interruption.effect == effect && diskWatch->interruption.call == number;
}

bool isWatchedName(const char* name)
{
    return diskWatch != nullptr && name != nullptr && std::string_view(name).starts_with(diskWatch->folder.native());
}

/// A call on a file and the code that it fails with.
struct VfsCall {
    std::string_view name;
    Kind kind = Kind::query;
    const char* path = nullptr;
    int error = SQLITE_IOERR;
    std::string_view bytes = {};
    sqlite3_int64 offset = 0;
};

void record(const VfsCall& call)
{
    diskWatch->calls.push_back({.kind = call.kind,
                                .name = call.name,
                                .path = call.path,
                                .target = {},
                                .bytes = std::string(call.bytes),
                                .offset = static_cast<std::size_t>(call.offset),
                                .done = true});
}

/// Makes the call and records it, or interrupts it. `half` does a part of the call.
template <class Call, class Half>
int callOrInterrupt(const VfsCall& call, Call make, Half half)
{
    if (!isWatchedName(call.path))
        return make();
    const std::size_t number = diskWatch->isQuery.size();
    diskWatch->isQuery.push_back(call.kind == Kind::query);
    if (isFailing(number))
        return call.error;
    if (hasEffect(Effect::writesOne, number) || hasEffect(Effect::killedHalfway, number)) {
        half();
        if (hasEffect(Effect::killedHalfway, number))
            killThisProcess();
        return call.error;
    }
    const int result = make();
    if (call.kind != Kind::query && result == SQLITE_OK)
        record(call);
    if (hasEffect(Effect::killedAfter, number))
        killThisProcess();
    return result;
}

template <class Call>
int callOrInterrupt(const VfsCall& call, Call make)
{
    return callOrInterrupt(call, make, [] {});
}

const char* nameOf(sqlite3_file* file)
{
    return watchedFile(file).name;
}

int closeFile(sqlite3_file* file)
{
    sqlite3_file* const real = watchedFile(file).real;
    return real->pMethods != nullptr ? real->pMethods->xClose(real) : SQLITE_OK;
}

int readFrom(sqlite3_file* file, void* bytes, int length, sqlite3_int64 offset)
{
    sqlite3_file* const real = watchedFile(file).real;
    return callOrInterrupt({"xRead", Kind::query, nameOf(file), SQLITE_IOERR_READ},
                           [=] { return real->pMethods->xRead(real, bytes, length, offset); });
}

int writeTo(sqlite3_file* file, const void* bytes, int length, sqlite3_int64 offset)
{
    sqlite3_file* const real = watchedFile(file).real;
    const int chosenError = diskWatch != nullptr ? diskWatch->interruption.error : 0;
    const VfsCall call{"xWrite",
                       Kind::write,
                       nameOf(file),
                       chosenError != 0 ? chosenError : SQLITE_IOERR_WRITE,
                       {static_cast<const char*>(bytes), static_cast<std::size_t>(length)},
                       offset};
    return callOrInterrupt(
        call, [=] { return real->pMethods->xWrite(real, bytes, length, offset); },
        [=] { static_cast<void>(real->pMethods->xWrite(real, bytes, length / 2, offset)); });
}

int truncateTo(sqlite3_file* file, sqlite3_int64 length)
{
    sqlite3_file* const real = watchedFile(file).real;
    return callOrInterrupt({"xTruncate", Kind::truncate, nameOf(file), SQLITE_IOERR_TRUNCATE, {}, length},
                           [=] { return real->pMethods->xTruncate(real, length); });
}

void recordFolderFlush(const char* file)
{
    const std::string folder = fs::path(file).parent_path();
    if (isWatchedName(file))
        record({"xSync", Kind::flush, folder.c_str()});
}

int syncFile(sqlite3_file* file, int flags)
{
    sqlite3_file* const real = watchedFile(file).real;
    if (!isWatchedName(nameOf(file)))
        return real->pMethods->xSync(real, flags);
    const int result =
        callOrInterrupt({"xSync", Kind::flush, nameOf(file), SQLITE_IOERR_FSYNC}, [] { return SQLITE_OK; });
    if (result == SQLITE_OK && watchedFile(file).isJournal)
        recordFolderFlush(nameOf(file)); // the system's VFS flushes the folder of a new journal
    return result;
}

int sizeOf(sqlite3_file* file, sqlite3_int64* size)
{
    sqlite3_file* const real = watchedFile(file).real;
    return callOrInterrupt({"xFileSize", Kind::query, nameOf(file), SQLITE_IOERR_FSTAT},
                           [=] { return real->pMethods->xFileSize(real, size); });
}

int lockFile(sqlite3_file* file, int level)
{
    sqlite3_file* const real = watchedFile(file).real;
    return callOrInterrupt({"xLock", Kind::query, nameOf(file), SQLITE_IOERR_LOCK},
                           [=] { return real->pMethods->xLock(real, level); });
}

int unlockFile(sqlite3_file* file, int level)
{
    sqlite3_file* const real = watchedFile(file).real;
    return real->pMethods->xUnlock(real, level);
}

int isReserved(sqlite3_file* file, int* result)
{
    sqlite3_file* const real = watchedFile(file).real;
    return callOrInterrupt({"xCheckReservedLock", Kind::query, nameOf(file), SQLITE_IOERR_CHECKRESERVEDLOCK},
                           [=] { return real->pMethods->xCheckReservedLock(real, result); });
}

int control(sqlite3_file* file, int operation, void* argument)
{
    sqlite3_file* const real = watchedFile(file).real;
    return real->pMethods->xFileControl(real, operation, argument);
}

int sectorSize(sqlite3_file* file)
{
    sqlite3_file* const real = watchedFile(file).real;
    return real->pMethods->xSectorSize(real);
}

/// Promises neither complete sectors nor their order.
int characteristics(sqlite3_file* /*file*/)
{
    return 0;
}

constexpr sqlite3_io_methods kMethods = {
    .iVersion = 1,
    .xClose = closeFile,
    .xRead = readFrom,
    .xWrite = writeTo,
    .xTruncate = truncateTo,
    .xSync = syncFile,
    .xFileSize = sizeOf,
    .xLock = lockFile,
    .xUnlock = unlockFile,
    .xCheckReservedLock = isReserved,
    .xFileControl = control,
    .xSectorSize = sectorSize,
    .xDeviceCharacteristics = characteristics,
    .xShmMap = nullptr,
    .xShmLock = nullptr,
    .xShmBarrier = nullptr,
    .xShmUnmap = nullptr,
    .xFetch = nullptr,
    .xUnfetch = nullptr,
};

sqlite3_vfs* systemVfs = nullptr;

int openFile(sqlite3_vfs* /*vfs*/, sqlite3_filename name, sqlite3_file* file, int flags, int* outFlags)
{
    WatchedFile& watched = watchedFile(file);
    watched.file.pMethods = nullptr;
    watched.real = reinterpret_cast<sqlite3_file*>(&watched + 1);
    watched.real->pMethods = nullptr;
    watched.name = name;
    watched.isJournal = (flags & SQLITE_OPEN_MAIN_JOURNAL) != 0;
    const bool isNew = isWatchedName(name) && !fs::exists(name);
    const int result = callOrInterrupt({"xOpen", isNew ? Kind::create : Kind::open, name, SQLITE_CANTOPEN}, [&] {
        return systemVfs->xOpen(systemVfs, name, watched.real, flags, outFlags);
    });
    if (watched.real->pMethods != nullptr)
        watched.file.pMethods = &kMethods;
    return result;
}

int removeFile(sqlite3_vfs* /*vfs*/, const char* name, int flushesFolder)
{
    const int result = callOrInterrupt({"xDelete", Kind::remove, name, SQLITE_IOERR_DELETE},
                                       [=] { return systemVfs->xDelete(systemVfs, name, 0); });
    if (result == SQLITE_OK && flushesFolder != 0)
        recordFolderFlush(name);
    return result;
}

int accessFile(sqlite3_vfs* /*vfs*/, const char* name, int flags, int* result)
{
    return callOrInterrupt({"xAccess", Kind::query, name, SQLITE_IOERR_ACCESS},
                           [=] { return systemVfs->xAccess(systemVfs, name, flags, result); });
}

/// Registers the VFS when the program starts, so that others lie above it.
const bool isRegistered = [] {
    systemVfs = sqlite3_vfs_find(nullptr);
    static sqlite3_vfs vfs = *systemVfs;
    vfs.szOsFile = static_cast<int>(sizeof(WatchedFile)) + systemVfs->szOsFile;
    vfs.pNext = nullptr;
    vfs.zName = "watched";
    vfs.xOpen = openFile;
    vfs.xDelete = removeFile;
    vfs.xAccess = accessFile;
    return sqlite3_vfs_register(&vfs, 1) == SQLITE_OK;
}();

} // namespace

WatchedDisk::WatchedDisk(const fs::path& folder, const Interruption& interruption)
{
    diskWatch = isRegistered ? new DiskWatch{folder, interruption, {}, {}} : nullptr;
}

WatchedDisk::~WatchedDisk()
{
    delete std::exchange(diskWatch, nullptr);
}

const std::vector<DiskCall>& WatchedDisk::calls() const
{
    return diskWatch->calls;
}

const std::vector<bool>& WatchedDisk::isQuery() const
{
    return diskWatch->isQuery;
}

} // namespace Tests
