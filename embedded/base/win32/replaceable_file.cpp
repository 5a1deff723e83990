#include "embedded/base/replaceable_file.h"

#include <windows.h>

#include "embedded/base/path.h"
#include "embedded/base/system_error.h"
#include "embedded/base/win32/file_handle.h"

namespace Embedded {
namespace {

namespace fs = std::filesystem;

/// Where a link leads.
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
        throw std::system_error(lastSystemError());
    target.resize(GetFinalPathNameByHandleW(opened.get(), target.data(), static_cast<DWORD>(target.size()), 0));
    return target.empty() ? name : fs::path(target);
}

} // namespace

fs::path replaceableFile(const fs::path& file)
{
    fs::path target = targetOf(file);
    if (target.wstring().starts_with(LR"(\\.\)")) // of a device, such as NUL
        throw std::system_error(std::make_error_code(std::errc::invalid_argument));
    const DWORD attributes = GetFileAttributesW(target.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) {
        if (GetLastError() != ERROR_FILE_NOT_FOUND)
            throw std::system_error(lastSystemError());
    } else if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
        throw std::system_error(std::make_error_code(std::errc::is_a_directory));
    } else if ((attributes & FILE_ATTRIBUTE_READONLY) != 0) {
        throw std::system_error(std::make_error_code(std::errc::permission_denied));
    }
    return target;
}

} // namespace Embedded
