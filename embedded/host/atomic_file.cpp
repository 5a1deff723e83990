#include "embedded/host/atomic_file.h"

#include "embedded/foundation/atomic_file.h"

namespace Embedded {

FileResult writeFileAtomically(const std::filesystem::path& file, std::string_view text)
{
    const auto failure = replaceFile(file, text);
    if (!failure)
        return {};
    const bool planned = failure->plannedCode != 0;
    return {planned ? static_cast<Qeapp::ErrorStatus>(failure->plannedCode) : Qeapp::eFileWriteFailed,
            failure->message};
}

} // namespace Embedded
