#include "embedded/foundation/atomic_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <optional>
#include <system_error>

#include "embedded/foundation/display_name.h"
#include "embedded/foundation/posix/file_descriptor.h"
#include "embedded/foundation/posix/temporary_file.h"

namespace Embedded {
namespace {

namespace fs = std::filesystem;

constexpr int kMostLinks = 40;

/// The file that is to be replaced: where the links lead, whether or not there is one yet.
fs::path targetOf(fs::path file)
{
    std::error_code error;
    for (int links = 0;; ++links) {
        const fs::file_type type = fs::symlink_status(file, error).type();
        if (type == fs::file_type::none) // a link that cannot be seen would be replaced itself
            throw WriteFailure{error.value()};
        if (type != fs::file_type::symlink)
            return file;
        const fs::path destination = fs::read_symlink(file, error);
        if (error || links == kMostLinks)
            throw WriteFailure{error ? error.value() : ELOOP};
        file = file.parent_path() / destination;
    }
}

/// How to make the new file like the one it replaces; nothing when there is none.
std::optional<struct stat> originalAt(const fs::path& target)
{
    struct stat original {};
    if (::stat(target.c_str(), &original) != 0) {
        if (errno == ENOENT)
            return std::nullopt;
        throw WriteFailure{errno};
    }
    if (!S_ISREG(original.st_mode))
        throw WriteFailure{S_ISDIR(original.st_mode) ? EISDIR : EINVAL};
    if (::faccessat(AT_FDCWD, target.c_str(), W_OK, AT_EACCESS) != 0)
        throw WriteFailure{errno};
    return original;
}

void replace(const fs::path& target, std::string_view text)
{
    const std::optional<struct stat> original = originalAt(target);
    const fs::path folder = target.has_parent_path() ? target.parent_path() : fs::path(".");
    TemporaryFile::removeAbandoned(folder);
    TemporaryFile temporary(folder, original ? 0600 : 0666);
    temporary.write(text);
    if (original)
        temporary.copyAccess(*original);
    temporary.flush();
    temporary.renameTo(target);
    flushFolder(folder);
}

} // namespace

std::optional<ReplacementFailure> replaceFile(const fs::path& file, std::string_view text)
{
    try {
        replace(targetOf(file), text);
        return std::nullopt;
    } catch (const WriteFailure& failure) {
        return ReplacementFailure{failure.error, failure.plannedCode,
                                  displayName(file) +
                                      ": cannot be written: " + std::generic_category().message(failure.error)};
    }
}

} // namespace Embedded
