#include "embedded/base/system_path.h"

namespace Embedded {

std::filesystem::path systemPath(const std::filesystem::path& file)
{
    return file;
}

} // namespace Embedded
