// Bytes for tables of test cases.
#pragma once

#include <cstddef>
#include <initializer_list>
#include <string>

#include "support/chain.h"

namespace Tests {

/// The byte `count` times.
Bytes repeated(unsigned char byte, std::size_t count);
/// `count` bytes that count upwards, so that no two neighbours are equal.
Bytes distinct(std::size_t count, unsigned char first = 0);
Bytes joined(std::initializer_list<Bytes> parts);
/// Two lower-case digits for each byte.
std::string toHex(const Bytes& bytes);
/// Reads such digits, with blanks anywhere. Throws for any other character.
Bytes parseHex(const std::string& digits);

} // namespace Tests
