#include "embedded/base/atomic_file.h"

#include "embedded/base/replaceable_file.h"
#include "embedded/base/staged_file.h"
#include "embedded/base/system_error.h"

namespace Embedded {

std::optional<std::string> replaceFile(const std::filesystem::path& file, std::string_view text)
{
    try {
        const std::filesystem::path target = replaceableFile(file);
        StagedFile staged(target);
        staged.write(text);
        staged.replace(target);
        return std::nullopt;
    } catch (const std::system_error& failure) {
        return "cannot be written: " + systemMessage(failure);
    }
}

} // namespace Embedded
