#include "embedded/base/file_kind.h"

namespace Embedded {

const char* notRegularMessage(FileKind kind)
{
    switch (kind) {
    case FileKind::folder:
        return "is a folder";
    case FileKind::pipe:
        return "is a pipe, not a regular file";
    case FileKind::device:
        return "is a device, not a regular file";
    default:
        return "is not a regular file";
    }
}

} // namespace Embedded
