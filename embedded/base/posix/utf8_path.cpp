#include "embedded/base/utf8_path.h"

namespace Embedded {

std::filesystem::path pathFromUtf8(const std::string& name)
{
    return name;
}

} // namespace Embedded
