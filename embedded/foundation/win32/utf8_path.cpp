#include "embedded/foundation/utf8_path.h"

#include "embedded/foundation/text.h"

namespace Embedded {

std::filesystem::path pathFromUtf8(const std::string& name)
{
    return wideFromUtf8(name);
}

} // namespace Embedded
