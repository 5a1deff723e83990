#include "embedded/base/path.h"

#include "embedded/base/text.h"

namespace Embedded {

std::string displayName(const std::filesystem::path& file)
{
    const auto utf8 = file.u8string();
    return utf8FromWide(wideFromUtf8(std::string(utf8.begin(), utf8.end())));
}

} // namespace Embedded
