// The definition stream, version 1. Numbers of more than one byte are little-endian. docs/formats/definition-stream.md
// describes the format and has an example.
//
//   stream     = 00 01 count:varint definition* crc32    at most 1,024 bytes; crc32 of all bytes before it
//   definition = type:byte code:text value               01 system, 02 datum, 03 ellipsoid; an empty code stands for
//                                                        the code of the PROJJSON, which is the value
//   varint     = byte*                                   seven bits a byte, the low ones first, the high bit set on all
//                                                        but the last; at most 64 bits
//   text       = length:varint byte*                     UTF-8 without NUL
//   value      = 00                                      null
//              | 01 | 02                                 false, true
//              | 03 n:varint | 04 n:varint               the integers n and -1 - n
//              | 05 m:varint k:byte | 06 m:varint k:byte the numbers m / 10^k and -m / 10^k
//              | 07 byte byte byte byte byte byte byte byte   the number of these bits, IEEE 754
//              | 08 text
//              | 09 count:varint value*                  array
//              | 0A count:varint (key:value value)*      object; a key is a text
//              | 0B n:varint                             {"authority":"EPSG","code":n}
//              | 0C identity:value value unit:value      operation parameter: "name" and "id" of the identity
//              | 10 ... EF                               entry 0 to 223 of the vocabulary
//              | F0 byte ... FF byte                     entry 224 + 256 * (first - F0) + second of the vocabulary
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "embedded/base/error.h"
#include "embedded/spatial_reference/projjson/definition_data.h"

namespace Embedded {

inline constexpr std::size_t kLongestDefinitionStreamInBytes = 1024;

/// The stream of the definitions, whatever its length.
std::string encodeDefinitionStream(const std::vector<DefinitionData>& definitions);

/// The definitions of a whole, undamaged stream. The Error has statusUnreadable.
Expected<std::vector<DefinitionData>> decodeDefinitionStream(std::string_view bytes);

} // namespace Embedded
