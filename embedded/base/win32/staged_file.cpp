#include "embedded/base/staged_file.h"

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
constexpr const char* kFailed = "cannot be written";

/// The name does not contain the target's, which may be as long as the folder allows.
fs::path newTemporaryName(const fs::path& folder)
{
    static std::atomic<unsigned> counter{0};
    return folder / (".saving-" + std::to_string(GetCurrentProcessId()) + "-" + std::to_string(counter++) + ".tmp");
}

/// The file that a link leads to.
fs::path followLinks(const fs::path& file)
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

/// Throws std::system_error unless the file can be written to or does not exist.
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

} // namespace

/// Its members throw std::system_error.
class StagedFile::Imp {
public:
    explicit Imp(fs::path file) : target(std::move(file))
    {
        const fs::path folder = systemPath(target).parent_path();
        constexpr DWORD kAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE; // SQLite may fill the file
        for (int attempt = 0; attempt < kMaxAttempts; ++attempt) {
            const fs::path fresh = newTemporaryName(folder);
            handle = FileHandle(
                CreateFileW(fresh.c_str(), GENERIC_WRITE, kAll, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
            if (handle.isOpen()) {
                name = fresh;
                return;
            }
            if (GetLastError() != ERROR_FILE_EXISTS)
                break;
        }
        throw std::system_error(lastSystemError());
    }
    ~Imp()
    {
        handle.close();
        if (!name.empty())
            static_cast<void>(DeleteFileW(name.c_str())); // nothing more can be done about it
    }

    void write(std::string_view bytes) const
    {
        constexpr std::size_t kMostAtOnce = std::size_t{64} * 1024 * 1024;
        while (!bytes.empty()) {
            DWORD written = 0;
            const auto length = static_cast<DWORD>(std::min(bytes.size(), kMostAtOnce));
            if (WriteFile(handle.get(), bytes.data(), length, &written, nullptr) == 0)
                throw std::system_error(lastSystemError());
            if (written == 0)
                throw std::system_error(std::make_error_code(std::errc::no_space_on_device));
            bytes.remove_prefix(written);
        }
    }

    bool publish() { return move(0); }
    void replaceTarget() { static_cast<void>(move(MOVEFILE_REPLACE_EXISTING)); } // true with this flag

    fs::path target;
    fs::path name;

private:
    /// Returns false if the target exists and may not be replaced.
    bool move(DWORD flags)
    {
        if (FlushFileBuffers(handle.get()) == 0)
            throw std::system_error(lastSystemError());
        handle.close();
        if (MoveFileExW(name.c_str(), systemPath(target).c_str(), MOVEFILE_WRITE_THROUGH | flags) == 0) {
            if (GetLastError() == ERROR_ALREADY_EXISTS || GetLastError() == ERROR_FILE_EXISTS)
                return false;
            throw std::system_error(lastSystemError());
        }
        name.clear();
        return true;
    }

    FileHandle handle;
};

StagedFile::StagedFile(std::unique_ptr<Imp> imp) : imp_(std::move(imp))
{
}

StagedFile::StagedFile(StagedFile&& other) noexcept = default;
StagedFile& StagedFile::operator=(StagedFile&& other) noexcept = default;
StagedFile::~StagedFile() = default;

Expected<StagedFile> StagedFile::create(const fs::path& target)
{
    return catchSystemError(kFailed, displayName(target), [&] { return StagedFile(std::make_unique<Imp>(target)); });
}

const fs::path& StagedFile::temporaryName() const
{
    return imp_->name;
}

Expected<void> StagedFile::write(std::string_view bytes)
{
    return catchSystemError(kFailed, displayName(imp_->target), [&] { imp_->write(bytes); });
}

Expected<bool> StagedFile::publish()
{
    return catchSystemError(kFailed, displayName(imp_->target), [&] { return imp_->publish(); });
}

Expected<void> StagedFile::replaceTarget()
{
    return catchSystemError(kFailed, displayName(imp_->target), [&] { imp_->replaceTarget(); });
}

Expected<fs::path> replaceableFile(const fs::path& file)
{
    return catchSystemError(kFailed, displayName(file), [&] {
        fs::path target = followLinks(file);
        requireReplaceable(target);
        return target;
    });
}

} // namespace Embedded
