#include "embedded/foundation/atomic_file.h"

#include <windows.h>

#include <algorithm>
#include <atomic>

#include "embedded/foundation/display_name.h"
#include "embedded/foundation/faults.h"
#include "embedded/foundation/system_path.h"
#include "embedded/foundation/win32/file_handle.h"
#include "embedded/foundation/win32/system_error.h"

namespace Embedded {
namespace {

namespace fs = std::filesystem;

constexpr int kMostNames = 100; // tried for the temporary file
constexpr std::size_t kLongestName = 255;
constexpr const wchar_t* kBackupSuffix = L".before-save";

/// What stopped the write; thrown from step to step, so that the temporary file goes away on every road.
struct WriteFailure {
    DWORD error = 0; // of GetLastError
    int plannedCode = 0;
};

void strike(std::string_view step, DWORD error)
{
    if (const auto fault = Faults::strike(step, 0))
        throw WriteFailure{error, *fault};
}

bool isThere(const fs::path& file)
{
    return GetFileAttributesW(file.c_str()) != INVALID_FILE_ATTRIBUTES;
}

bool isFile(const fs::path& file)
{
    const DWORD attributes = GetFileAttributesW(file.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

/// FNV-1a, which answers the same in every run, of a file's name, in which cases do not matter.
std::wstring hashOf(std::wstring name)
{
    const auto length = static_cast<int>(name.size());
    static_cast<void>(LCMapStringEx(LOCALE_NAME_INVARIANT, LCMAP_UPPERCASE, name.c_str(), length, name.data(), length,
                                    nullptr, nullptr, 0)); // a name that it refused would be hashed as it is
    std::uint64_t hash = 14695981039346656037U;
    for (const wchar_t unit : name)
        hash = (hash ^ unit) * 1099511628211U;
    std::wstring digits;
    for (int shift = 60; shift >= 0; shift -= 4)
        digits += L"0123456789abcdef"[(hash >> shift) & 15U];
    return digits;
}

/// Where the old file is while the new one takes its place. A name that has no room for the suffix is shortened.
fs::path backupOf(const fs::path& target)
{
    std::wstring name = target.filename().wstring();
    if (name.size() + std::wcslen(kBackupSuffix) > kLongestName)
        name = name.substr(0, 200) + L"-" + hashOf(name);
    return target.parent_path() / (name + kBackupSuffix);
}

/// A file under a name of its own, removed unless it was given its final one.
class TemporaryFile {
public:
    explicit TemporaryFile(const fs::path& folder);
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile()
    {
        handle_.close();
        if (!name_.empty())
            static_cast<void>(DeleteFileW(name_.c_str())); // nothing more can be done about it
    }

    void write(std::string_view text);
    void flush();
    void takePlaceOf(const fs::path& target);

private:
    FileHandle handle_;
    fs::path name_;
};

/// Short whatever the target is called, which may have the longest name that the folder allows.
fs::path temporaryName(const fs::path& folder)
{
    static std::atomic<unsigned> counter{0};
    return folder / (".saving-" + std::to_string(GetCurrentProcessId()) + "-" + std::to_string(counter++) + ".tmp");
}

TemporaryFile::TemporaryFile(const fs::path& folder)
{
    strike("writeFileAtomically.open", ERROR_ACCESS_DENIED);
    for (int attempt = 0; attempt < kMostNames; ++attempt) {
        const fs::path name = temporaryName(folder);
        handle_ = FileHandle(
            CreateFileW(name.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
        if (handle_.isOpen()) {
            name_ = name;
            return;
        }
        if (GetLastError() != ERROR_FILE_EXISTS)
            break;
    }
    throw WriteFailure{GetLastError()};
}

void TemporaryFile::write(std::string_view text)
{
    strike("writeFileAtomically.write", ERROR_DISK_FULL);
    constexpr std::size_t kMostAtOnce = std::size_t{64} * 1024 * 1024;
    while (!text.empty()) {
        DWORD written = 0;
        const auto length = static_cast<DWORD>(std::min(text.size(), kMostAtOnce));
        if (WriteFile(handle_.get(), text.data(), length, &written, nullptr) == 0)
            throw WriteFailure{GetLastError()};
        if (written == 0)
            throw WriteFailure{ERROR_DISK_FULL};
        text.remove_prefix(written);
    }
}

void TemporaryFile::flush()
{
    strike("writeFileAtomically.sync", ERROR_IO_DEVICE);
    if (FlushFileBuffers(handle_.get()) == 0)
        throw WriteFailure{GetLastError()};
    handle_.close();
}

void TemporaryFile::takePlaceOf(const fs::path& target)
{
    strike("writeFileAtomically.rename", ERROR_IO_DEVICE);
    const fs::path backup = backupOf(target);
    const bool replaces = isThere(target);
    const BOOL done = replaces ? ReplaceFileW(target.c_str(), name_.c_str(), backup.c_str(),
                                              REPLACEFILE_IGNORE_MERGE_ERRORS, nullptr, nullptr)
                               : MoveFileExW(name_.c_str(), target.c_str(), MOVEFILE_WRITE_THROUGH);
    if (done == 0) {
        const DWORD error = GetLastError();
        static_cast<void>(recoverReplacedFile(target)); // the save failed, whether or not the old file comes back
        throw WriteFailure{error};
    }
    name_.clear();
    static_cast<void>(DeleteFileW(backup.c_str())); // one that stays is replaced by the next save
}

/// The file that is to be replaced: where a link leads.
fs::path targetOf(const fs::path& file)
{
    const fs::path name = systemPath(file);
    const DWORD attributes = GetFileAttributesW(name.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0)
        return name;
    constexpr DWORD kAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const FileHandle opened(
        CreateFileW(name.c_str(), 0, kAll, nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    std::wstring target(32768, L'\0'); // the longest there is
    if (!opened.isOpen())
        throw WriteFailure{GetLastError()};
    target.resize(GetFinalPathNameByHandleW(opened.get(), target.data(), static_cast<DWORD>(target.size()), 0));
    return target.empty() ? name : fs::path(target);
}

/// A file that may not be written to is not replaced, nor is a folder or a device.
void checkReplaceable(const fs::path& target)
{
    if (target.wstring().starts_with(LR"(\\.\)"))
        throw WriteFailure{ERROR_INVALID_PARAMETER};
    const DWORD attributes = GetFileAttributesW(target.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) {
        const DWORD error = GetLastError();
        if (error != ERROR_FILE_NOT_FOUND)
            throw WriteFailure{error};
    } else if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
        throw WriteFailure{kErrorIsFolder};
    } else if ((attributes & FILE_ATTRIBUTE_READONLY) != 0) {
        throw WriteFailure{ERROR_ACCESS_DENIED};
    }
}

void replace(const fs::path& target, std::string_view text)
{
    if (const auto failure = recoverReplacedFile(target))
        throw WriteFailure{static_cast<DWORD>(failure->error)};
    checkReplaceable(target);
    TemporaryFile temporary(target.parent_path());
    temporary.write(text);
    temporary.flush();
    temporary.takePlaceOf(target);
}

} // namespace

std::optional<ReplacementFailure> replaceFile(const fs::path& file, std::string_view text)
{
    try {
        replace(targetOf(file), text);
        return std::nullopt;
    } catch (const WriteFailure& failure) {
        return ReplacementFailure{static_cast<int>(failure.error), failure.plannedCode,
                                  displayName(file) + ": cannot be written: " + systemMessage(failure.error)};
    }
}

std::optional<ReplacementFailure> recoverReplacedFile(const fs::path& file)
{
    const fs::path target = systemPath(file);
    const fs::path backup = backupOf(target);
    if (isThere(target) || !isFile(backup) || MoveFileExW(backup.c_str(), target.c_str(), MOVEFILE_WRITE_THROUGH) != 0)
        return std::nullopt;
    const DWORD error = GetLastError();
    return ReplacementFailure{static_cast<int>(error), 0,
                              displayName(file) + ": is still in " + displayName(backupOf(file)) +
                                  ", where an interrupted save left it: " + systemMessage(error)};
}

} // namespace Embedded
