#include "embedded/base/staged_file_imp.h"

#include <windows.h>

#include <algorithm>
#include <atomic>
#include <string>

#include "embedded/base/path.h"
#include "embedded/base/system_error.h"
#include "embedded/base/win32/file_handle.h"

namespace Embedded {
namespace {

namespace fs = std::filesystem;

constexpr int kMaxAttempts = 100;

/// The name does not contain the target's, which may be as long as the folder allows.
fs::path newTemporaryName(const fs::path& folder)
{
    static std::atomic<unsigned> counter{0};
    return folder / (".saving-" + std::to_string(GetCurrentProcessId()) + "-" + std::to_string(counter++) + ".tmp");
}

class SystemStagedFile final : public StagedFileImp {
public:
    explicit SystemStagedFile(const fs::path& file) : StagedFileImp(file)
    {
        const fs::path folder = systemPath(target_).parent_path();
        constexpr DWORD kAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE; // SQLite may fill the file
        for (int attempt = 0; attempt < kMaxAttempts; ++attempt) {
            const fs::path fresh = newTemporaryName(folder);
            handle_ = FileHandle(
                CreateFileW(fresh.c_str(), GENERIC_WRITE, kAll, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
            if (handle_.isOpen()) {
                name_ = fresh;
                return;
            }
            if (GetLastError() != ERROR_FILE_EXISTS)
                break;
        }
        throw std::system_error(lastSystemError());
    }
    ~SystemStagedFile() override
    {
        handle_.close();
        if (!name_.empty())
            static_cast<void>(DeleteFileW(name_.c_str())); // nothing more can be done about it
    }

    void write(std::string_view bytes) override
    {
        constexpr std::size_t kMostAtOnce = std::size_t{64} * 1024 * 1024;
        while (!bytes.empty()) {
            DWORD written = 0;
            const auto length = static_cast<DWORD>(std::min(bytes.size(), kMostAtOnce));
            if (WriteFile(handle_.get(), bytes.data(), length, &written, nullptr) == 0)
                throw std::system_error(lastSystemError());
            if (written == 0)
                throw std::system_error(std::make_error_code(std::errc::no_space_on_device));
            bytes.remove_prefix(written);
        }
    }

    bool publish() override { return move(0); }
    void replaceTarget() override { static_cast<void>(move(MOVEFILE_REPLACE_EXISTING)); } // true with this flag

private:
    /// Returns false if the target exists and may not be replaced.
    bool move(DWORD flags)
    {
        if (FlushFileBuffers(handle_.get()) == 0)
            throw std::system_error(lastSystemError());
        handle_.close();
        if (MoveFileExW(name_.c_str(), systemPath(target_).c_str(), MOVEFILE_WRITE_THROUGH | flags) == 0) {
            if (GetLastError() == ERROR_ALREADY_EXISTS || GetLastError() == ERROR_FILE_EXISTS)
                return false;
            throw std::system_error(lastSystemError());
        }
        name_.clear();
        return true;
    }

    FileHandle handle_;
};

} // namespace

fs::path followLinks(fs::path file)
{
    const fs::path name = systemPath(file);
    const DWORD attributes = GetFileAttributesW(name.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0)
        return name;
    constexpr DWORD kAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const FileHandle opened(
        CreateFileW(name.c_str(), 0, kAll, nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    std::wstring target(32768, L'\0'); // no name is longer
    if (!opened.isOpen())
        throw std::system_error(lastSystemError());
    target.resize(GetFinalPathNameByHandleW(opened.get(), target.data(), static_cast<DWORD>(target.size()), 0));
    return target.empty() ? name : fs::path(target);
}

void requireReplaceable(const fs::path& file)
{
    if (file.wstring().starts_with(LR"(\\.\)")) // a device, such as NUL
        throw std::system_error(std::make_error_code(std::errc::invalid_argument));
    const DWORD attributes = GetFileAttributesW(file.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) {
        if (GetLastError() != ERROR_FILE_NOT_FOUND)
            throw std::system_error(lastSystemError());
    } else if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
        throw std::system_error(std::make_error_code(std::errc::is_a_directory));
    } else if ((attributes & FILE_ATTRIBUTE_READONLY) != 0) {
        throw std::system_error(std::make_error_code(std::errc::permission_denied));
    }
}

std::unique_ptr<StagedFileImp> StagedFileImp::create(const fs::path& target)
{
    return std::make_unique<SystemStagedFile>(target);
}

} // namespace Embedded
