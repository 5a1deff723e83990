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

constexpr int kMostNames = 100;

/// Short whatever the target is called, which may have the longest name that the folder allows.
fs::path temporaryName(const fs::path& folder)
{
    static std::atomic<unsigned> counter{0};
    return folder / (".saving-" + std::to_string(GetCurrentProcessId()) + "-" + std::to_string(counter++) + ".tmp");
}

} // namespace

class StagedFile::Imp {
public:
    explicit Imp(const fs::path& folder)
    {
        constexpr DWORD kAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE; // SQLite may fill the file
        for (int attempt = 0; attempt < kMostNames; ++attempt) {
            const fs::path fresh = temporaryName(folder);
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

    /// False for a target that exists and may not be replaced.
    bool moveTo(const fs::path& target, DWORD flags)
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
    fs::path name;
};

StagedFile::StagedFile(const fs::path& target) : imp_(std::make_unique<Imp>(systemPath(target).parent_path()))
{
}

StagedFile::~StagedFile() = default;

const fs::path& StagedFile::name() const
{
    return imp_->name;
}

void StagedFile::write(std::string_view bytes)
{
    constexpr std::size_t kMostAtOnce = std::size_t{64} * 1024 * 1024;
    while (!bytes.empty()) {
        DWORD written = 0;
        const auto length = static_cast<DWORD>(std::min(bytes.size(), kMostAtOnce));
        if (WriteFile(imp_->handle.get(), bytes.data(), length, &written, nullptr) == 0)
            throw std::system_error(lastSystemError());
        if (written == 0)
            throw std::system_error(std::make_error_code(std::errc::no_space_on_device));
        bytes.remove_prefix(written);
    }
}

bool StagedFile::publishAs(const fs::path& target)
{
    return imp_->moveTo(target, 0);
}

void StagedFile::replace(const fs::path& target)
{
    static_cast<void>(imp_->moveTo(target, MOVEFILE_REPLACE_EXISTING)); // a target that exists is replaced
}

} // namespace Embedded
