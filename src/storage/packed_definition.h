// One definition as packed bytes: its class identifier and its stream without the first byte, run-length packed.
// See docs/formats/packed-definition.md.
#pragma once

#include <cstddef>
#include <vector>

#include "storage/library_holder.h"

namespace Orvel {

/// Packs the definition. False, with empty `bytes`, for a null definition, for a type that has no class identifier, and
/// for a definition whose stream needs more than 1,024 bytes.
[[nodiscard]] bool EncodeDefinitionBytes(const Library::DefinitionBase* definition, std::vector<unsigned char>& bytes);

/// Reads the definition in the bytes. Empty when they do not hold exactly one.
[[nodiscard]] LibraryObject<Library::DefinitionBase> DecodeDefinitionBytes(const unsigned char* bytes,
                                                                           std::size_t length);

} // namespace Orvel
