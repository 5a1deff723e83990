// A file's name for people.
#pragma once

#include <filesystem>
#include <string>

#include "embedded/base/text.h"

namespace Embedded {

/// A file's name as it may stand in a message, whatever bytes it is made of.
inline std::string displayName(const std::filesystem::path& file)
{
    const auto utf8 = file.u8string();
    return utf8FromWide(wideFromUtf8(std::string(utf8.begin(), utf8.end())));
}

} // namespace Embedded
