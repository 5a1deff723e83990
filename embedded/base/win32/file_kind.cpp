#include "embedded/base/file_kind.h"

#include <windows.h>

#include "embedded/base/path.h"
#include "embedded/base/system_error.h"

namespace Embedded {

Expected<FileKind> fileKind(const std::filesystem::path& file)
{
    const std::filesystem::path name = systemPath(file);
    if (name.wstring().starts_with(LR"(\\.\pipe\)"))
        return FileKind::pipe;
    if (name.wstring().starts_with(LR"(\\.\)")) // such as NUL and COM1
        return FileKind::device;
    const DWORD attributes = GetFileAttributesW(name.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) {
        const std::error_code error = lastSystemError();
        return failure(error.value(), systemMessage(error));
    }
    return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0 ? FileKind::folder : FileKind::regular;
}

} // namespace Embedded
