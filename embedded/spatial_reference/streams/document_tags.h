// The bytes of a coded document that its writer and its reader agree on.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "embedded/spatial_reference/projjson/projjson.h"

namespace Embedded {

/// The first byte of a value.
namespace Tag {
inline constexpr unsigned null = 0x00;
inline constexpr unsigned falseValue = 0x01;
inline constexpr unsigned trueValue = 0x02;
inline constexpr unsigned integer = 0x03;         // varint
inline constexpr unsigned negativeInteger = 0x04; // varint of -1 - n
inline constexpr unsigned decimal = 0x05;         // varint m, byte k: m / 10^k
inline constexpr unsigned negativeDecimal = 0x06; // the same, negated
inline constexpr unsigned floatingPoint = 0x07;   // eight bytes
inline constexpr unsigned text = 0x08;            // varint length, UTF-8
inline constexpr unsigned array = 0x09;           // varint count, values
inline constexpr unsigned object = 0x0A;          // varint count, keys and values
inline constexpr unsigned epsgIdentifier = 0x0B;  // varint code: {"authority":"EPSG","code":...}
inline constexpr unsigned parameter = 0x0C;       // vocabulary reference, value, unit: an operation parameter
inline constexpr unsigned firstShort = 0x10;      // from here on: an entry of the vocabulary in one byte
inline constexpr unsigned firstLong = 0xF0;       // and the later entries in two
} // namespace Tag

inline constexpr std::size_t kShortEntries = Tag::firstLong - Tag::firstShort;

/// mantissa / 10^exponent; both are exact as doubles, so the quotient is rounded once and is the same everywhere.
struct Decimal {
    static constexpr std::uint64_t kLargestMantissa = std::uint64_t{1} << 53;
    static constexpr std::array<double, 23> kPowersOfTen{1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                         1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                                         1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
    std::uint64_t mantissa;
    unsigned exponent;

    double value() const { return static_cast<double>(mantissa) / kPowersOfTen[exponent]; }
};

/// An operation parameter is its identity, name and id, with a value and a unit between them.
inline Projjson parameterFrom(const Projjson& identity, const Projjson& value, const Projjson& unit)
{
    return {{"name", identity.at("name")}, {"value", value}, {"unit", unit}, {"id", identity.at("id")}};
}

} // namespace Embedded
