#include "embedded/base/file_kind.h"

#include <system_error>

namespace Embedded {

Expected<FileKind> fileKind(const std::filesystem::path& file)
{
    namespace fs = std::filesystem;
    std::error_code error;
    const fs::file_status status = fs::status(file, error);
    if (!fs::status_known(status) || !fs::exists(status)) {
        const auto reason = error ? error : std::make_error_code(std::errc::no_such_file_or_directory);
        return failure(reason.value(), reason.message());
    }
    if (fs::is_regular_file(status))
        return FileKind::regular;
    switch (status.type()) {
    case fs::file_type::directory:
        return FileKind::folder;
    case fs::file_type::fifo:
        return FileKind::pipe;
    case fs::file_type::character:
    case fs::file_type::block:
        return FileKind::device;
    default:
        return FileKind::other;
    }
}

} // namespace Embedded
