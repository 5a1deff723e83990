// One definition as packed bytes: its class identifier and its stream without the first byte, run-length packed.
// See docs/formats/packed-definition.md.
#pragma once

#include <cstddef>
#include <vector>

#include "storage/library_holder.h"

namespace Orvel {

/// False for a null definition, one of another type than the three, and one whose stream needs more than 1,024 bytes;
/// `bytes` is then empty.
[[nodiscard]] bool EncodeDefinitionBytes(const Library::DefinitionBase* definition, std::vector<unsigned char>& bytes);

/// The definition in the bytes; empty when they do not hold exactly one.
[[nodiscard]] LibraryObject<Library::DefinitionBase> DecodeDefinitionBytes(const unsigned char* bytes,
                                                                           std::size_t length);

} // namespace Orvel
