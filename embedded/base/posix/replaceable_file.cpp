#include "embedded/base/replaceable_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "embedded/base/system_error.h"

namespace Embedded {
namespace {

namespace fs = std::filesystem;

constexpr int kMostLinks = 40;

/// Where the links lead.
fs::path targetOf(fs::path file)
{
    std::error_code error;
    for (int links = 0;; ++links) {
        const fs::file_type type = fs::symlink_status(file, error).type();
        if (type == fs::file_type::none) // a link that cannot be seen would be replaced itself
            throw std::system_error(error);
        if (type != fs::file_type::symlink)
            return file;
        const fs::path destination = fs::read_symlink(file, error);
        if (error || links == kMostLinks)
            throw std::system_error(error ? error : std::make_error_code(std::errc::too_many_symbolic_link_levels));
        file = file.parent_path() / destination;
    }
}

} // namespace

fs::path replaceableFile(const fs::path& file)
{
    fs::path target = targetOf(file);
    struct stat found {};
    if (::stat(target.c_str(), &found) != 0) {
        if (errno != ENOENT)
            throw std::system_error(lastSystemError());
        return target;
    }
    if (!S_ISREG(found.st_mode))
        throw std::system_error(
            std::make_error_code(S_ISDIR(found.st_mode) ? std::errc::is_a_directory : std::errc::invalid_argument));
    if (::faccessat(AT_FDCWD, target.c_str(), W_OK, AT_EACCESS) != 0)
        throw std::system_error(lastSystemError());
    return target;
}

} // namespace Embedded
