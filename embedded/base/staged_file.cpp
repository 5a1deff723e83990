#include "embedded/base/staged_file.h"

#include "embedded/base/path.h"

namespace Embedded {
namespace {

Expected<void> writeAndReplace(const std::filesystem::path& target, std::string_view bytes)
{
    return StagedFile::create(target).and_then(
        [&](StagedFile staged) { return staged.write(bytes).and_then([&] { return staged.replaceTarget(); }); });
}

} // namespace

Expected<void> replaceFile(const std::filesystem::path& file, std::string_view bytes)
{
    return replaceableFile(file)
        .and_then([&](const std::filesystem::path& target) { return writeAndReplace(target, bytes); })
        .map_error([&](Error error) {
            error.place = displayName(file); // not the file that a link leads to
            return error;
        });
}

} // namespace Embedded
