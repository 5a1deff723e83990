#include "embedded/host/drawing_file/sealed_pages.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <deque>
#include <mutex>

#define XXH_INLINE_ALL
#include <xxhash.h>

namespace Embedded {
namespace {

constexpr std::size_t kReservedByte = 20; // of a database's header: how much of each page is not SQLite's
constexpr std::size_t kPageSizeBytes = 16;
constexpr std::size_t kHeaderLength = 100;
constexpr sqlite3_int64 kLockBytes = 0x40000000; // the page that they lie in is never written

using Seal = std::array<unsigned char, kSealBytes>;

Seal sealOf(const unsigned char* page, std::size_t size, std::uint32_t number)
{
    const XXH64_hash_t hash = XXH3_64bits_withSeed(page, size - kSealBytes, number);
    Seal seal{};
    for (std::size_t byte = 0; byte < seal.size(); ++byte)
        seal[byte] = static_cast<unsigned char>(hash >> 8 * byte);
    return seal;
}

void sealPage(unsigned char* page, std::size_t size, std::uint32_t number)
{
    const Seal seal = sealOf(page, size, number);
    std::copy(seal.begin(), seal.end(), page + size - kSealBytes);
}

/// The methods of a file with another `xWrite`; the file itself is the other VFS's own.
struct SealingMethods {
    sqlite3_io_methods methods;
    const sqlite3_io_methods* original;
};

const sqlite3_io_methods& originalOf(sqlite3_file* file)
{
    return *reinterpret_cast<const SealingMethods*>(file->pMethods)->original;
}

bool hasRoomForSeals(sqlite3_file* file, const unsigned char* page, sqlite3_int64 offset)
{
    if (offset == 0)
        return page[kReservedByte] == kSealBytes;
    unsigned char reserved = 0;
    return originalOf(file).xRead(file, &reserved, 1, kReservedByte) == SQLITE_OK && reserved == kSealBytes;
}

// SQLite hands over whole pages, and nothing of its own lies in the bytes that are written to here.
int sealAndWrite(sqlite3_file* file, const void* bytes, int amount, sqlite3_int64 offset)
{
    auto* const page = static_cast<unsigned char*>(const_cast<void*>(bytes));
    if (amount >= 512 && offset % amount == 0 && hasRoomForSeals(file, page, offset))
        sealPage(page, static_cast<std::size_t>(amount), static_cast<std::uint32_t>(offset / amount + 1));
    return originalOf(file).xWrite(file, bytes, amount, offset);
}

/// There are as many as the other VFS has kinds of files: one or two.
const sqlite3_io_methods* sealing(const sqlite3_io_methods* original)
{
    static std::mutex mutex;
    static std::deque<SealingMethods> known;
    const std::lock_guard lock(mutex);
    const auto found =
        std::find_if(known.begin(), known.end(), [=](const auto& each) { return each.original == original; });
    if (found != known.end())
        return &found->methods;
    SealingMethods& added = known.emplace_back(SealingMethods{*original, original});
    added.methods.xWrite = sealAndWrite;
    added.methods.iVersion = 1; // without shared memory and mapped files
    return &added.methods;
}

struct SealingVfs {
    sqlite3_vfs vfs;
    sqlite3_vfs* base;
};

int openSealing(sqlite3_vfs* vfs, sqlite3_filename name, sqlite3_file* file, int flags, int* outFlags)
{
    sqlite3_vfs* const base = reinterpret_cast<SealingVfs*>(vfs)->base;
    const int result = base->xOpen(base, name, file, flags, outFlags);
    if (result == SQLITE_OK && (flags & SQLITE_OPEN_MAIN_DB) != 0)
        file->pMethods = sealing(file->pMethods);
    return result;
}

/// The other VFS, but for its `xOpen`.
SealingVfs& registerOver(sqlite3_vfs* base, std::deque<SealingVfs>& known)
{
    static std::deque<std::string> names;
    SealingVfs& added = known.emplace_back(SealingVfs{*base, base});
    added.vfs.pNext = nullptr;
    added.vfs.zName = names.emplace_back(std::string("sealing ") + base->zName).c_str();
    added.vfs.xOpen = openSealing;
    sqlite3_vfs_register(&added.vfs, 0);
    return added;
}

sqlite3_vfs* defaultVfs()
{
    // On Windows the default takes no names of more than 260 characters.
    sqlite3_vfs* const first = sqlite3_vfs_find(nullptr);
    sqlite3_vfs* const longNames = sqlite3_vfs_find("win32-longpath");
    return longNames != nullptr && std::strcmp(first->zName, "win32") == 0 ? longNames : first;
}

} // namespace

const char* sealingVfs()
{
    static std::mutex mutex;
    static std::deque<SealingVfs> known;
    const std::lock_guard lock(mutex);
    sqlite3_vfs* const base = defaultVfs();
    const auto found = std::find_if(known.begin(), known.end(), [=](const auto& each) { return each.base == base; });
    return found != known.end() ? found->vfs.zName : registerOver(base, known).vfs.zName;
}

void leaveRoomForSeals(sqlite3* connection)
{
    int bytes = kSealBytes;
    sqlite3_file_control(connection, "main", SQLITE_FCNTL_RESERVE_BYTES, &bytes);
}

namespace {

std::size_t pageSizeIn(const unsigned char* header)
{
    const std::size_t size = static_cast<std::size_t>(header[kPageSizeBytes]) << 8 | header[kPageSizeBytes + 1];
    return size == 1 ? 65536 : size;
}

} // namespace

void sealPages(std::string& database)
{
    auto* const bytes = reinterpret_cast<unsigned char*>(database.data());
    if (database.size() < kHeaderLength || bytes[kReservedByte] != kSealBytes)
        return;
    const std::size_t size = pageSizeIn(bytes);
    for (std::size_t at = 0; at + size <= database.size(); at += size)
        sealPage(bytes + at, size, static_cast<std::uint32_t>(at / size + 1));
}

bool hasSeals(sqlite3* connection)
{
    sqlite3_file* file = nullptr;
    unsigned char reserved = 0;
    sqlite3_file_control(connection, "main", SQLITE_FCNTL_FILE_POINTER, &file);
    return file != nullptr && file->pMethods != nullptr &&
           file->pMethods->xRead(file, &reserved, 1, kReservedByte) == SQLITE_OK && reserved == kSealBytes;
}

std::vector<std::uint32_t> brokenSeals(sqlite3* connection)
{
    sqlite3_file* file = nullptr;
    sqlite3_file_control(connection, "main", SQLITE_FCNTL_FILE_POINTER, &file);
    std::array<unsigned char, kHeaderLength> header{};
    sqlite3_int64 length = 0;
    if (file == nullptr || file->pMethods == nullptr ||
        file->pMethods->xRead(file, header.data(), kHeaderLength, 0) != SQLITE_OK ||
        file->pMethods->xFileSize(file, &length) != SQLITE_OK)
        return {0};
    const std::size_t size = pageSizeIn(header.data());
    if (size < 512 || length % static_cast<sqlite3_int64>(size) != 0)
        return {0};
    std::vector<std::uint32_t> broken;
    std::vector<unsigned char> page(size);
    for (sqlite3_int64 at = 0; at < length; at += static_cast<sqlite3_int64>(size)) {
        if (at <= kLockBytes && kLockBytes < at + static_cast<sqlite3_int64>(size))
            continue;
        const auto number = static_cast<std::uint32_t>(at / static_cast<sqlite3_int64>(size) + 1);
        const bool isRead = file->pMethods->xRead(file, page.data(), static_cast<int>(size), at) == SQLITE_OK;
        const Seal seal = sealOf(page.data(), size, number);
        if (!isRead || !std::equal(seal.begin(), seal.end(), page.end() - kSealBytes))
            broken.push_back(number);
    }
    return broken;
}

} // namespace Embedded
