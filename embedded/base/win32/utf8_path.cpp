#include "embedded/base/utf8_path.h"

#include "embedded/base/text.h"

namespace Embedded {

std::filesystem::path pathFromUtf8(const std::string& name)
{
    return wideFromUtf8(name);
}

} // namespace Embedded
