// Whether a chain of values can be one of an xrecord or of extended data.
#pragma once

#include <string>
#include <string_view>

#include "embedded/host/drawing_image.h"

namespace Embedded {

enum class ChainUse { xrecord, extendedData };

/// Empty for a valid chain; otherwise what is wrong, beginning with the place inside the chain ("[2].value: …").
std::string chainFault(const ImageChain& chain, ChainUse use);

/// Whether the text can be handed to clients, who see texts end at the first NUL.
bool isStorableText(std::wstring_view text);

} // namespace Embedded
