#include "embedded/foundation/win32/temporary_file.h"

#include <algorithm>
#include <atomic>
#include <string>

#include "embedded/foundation/faults.h"

namespace Embedded {
namespace {

namespace fs = std::filesystem;

constexpr int kMostNames = 100; // tried for the temporary file

void strike(std::string_view step, DWORD error)
{
    if (const auto fault = Faults::strike(step, 0))
        throw WriteFailure{error, *fault};
}

/// Short whatever the target is called, which may have the longest name that the folder allows.
fs::path temporaryName(const fs::path& folder)
{
    static std::atomic<unsigned> counter{0};
    return folder / (".saving-" + std::to_string(GetCurrentProcessId()) + "-" + std::to_string(counter++) + ".tmp");
}

} // namespace

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

TemporaryFile::~TemporaryFile()
{
    handle_.close();
    if (!name_.empty())
        static_cast<void>(DeleteFileW(name_.c_str())); // nothing more can be done about it
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

void TemporaryFile::renameTo(const fs::path& target)
{
    strike("writeFileAtomically.rename", ERROR_IO_DEVICE);
    if (MoveFileExW(name_.c_str(), target.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) == 0)
        throw WriteFailure{GetLastError()};
    name_.clear();
}

bool TemporaryFile::renameToNew(const fs::path& target)
{
    if (MoveFileExW(name_.c_str(), target.c_str(), MOVEFILE_WRITE_THROUGH) == 0) {
        if (GetLastError() == ERROR_ALREADY_EXISTS || GetLastError() == ERROR_FILE_EXISTS)
            return false;
        throw WriteFailure{GetLastError()};
    }
    name_.clear();
    return true;
}

} // namespace Embedded
