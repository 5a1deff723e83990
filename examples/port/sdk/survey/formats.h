#pragma once

#include "definitions.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// The forms in which definitions leave the library.
namespace Survey {

/// A text of one line for each definition, below a line that names the format:
///
///     survey definitions 1
///     ellipsoid|code|name|semi-major axis|inverse flattening
///     datum|code|name|ellipsoid's code
///     system|code|name|local, geographic or projected|datum's code|ellipsoid's code|projection
///
/// A backslash stands before a stroke or a backslash within a field, and `\n` for a line's end. Users write their own
/// systems in this format.
std::string writeText(const Definitions& definitions);
/// A system that names a datum of the same text stands on that one; the same goes for ellipsoids.
Answer readText(std::string_view text, Definitions& definitions);

/// A zero byte, and for each definition its fields as above: their number, and each field's length in two bytes, the
/// lower one first, before its UTF-8.
std::vector<std::uint8_t> writeBytes(const Definitions& definitions);
/// What could be read of damaged bytes is kept.
Answer readBytes(const std::uint8_t* bytes, std::size_t lengthInBytes, Definitions& definitions);

/// Well-known text. It is lossy for a system without a datum, since the text must name one.
Answer writeWellKnownText(const System& system, std::string& text);

} // namespace Survey
