#include "embedded/foundation/atomic_file.h"

#include <windows.h>

#include "embedded/foundation/display_name.h"
#include "embedded/foundation/system_path.h"
#include "embedded/foundation/win32/file_handle.h"
#include "embedded/foundation/win32/system_error.h"
#include "embedded/foundation/win32/temporary_file.h"

namespace Embedded {
namespace {

namespace fs = std::filesystem;

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
    checkReplaceable(target);
    TemporaryFile temporary(target.parent_path());
    temporary.write(text);
    temporary.flush();
    temporary.renameTo(target);
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

} // namespace Embedded
