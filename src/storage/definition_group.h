// A packed definition as resbufs: binary chunks between braces, or one chunk of its own.
// See docs/formats/definition-xrecord.md.
#pragma once

#include "storage/host_holders.h"
#include "storage/library_holder.h"

namespace Orvel {

/// Makes a chain of "{" (1002), chunks of at most 127 bytes (310) and "}" (1002). Empty when the definition cannot be
/// packed, when it needs more than 32,767 packed bytes, and when memory is short.
[[nodiscard]] ResbufChain DefinitionToResbufGroup(const Library::DefinitionBase* definition);

/// Reads the definition of the group that begins at a 1002 resbuf. Empty when there is none.
[[nodiscard]] LibraryObject<Library::DefinitionBase> ResbufGroupToDefinition(const resbuf* group);

/// Reads the definition that one 310 resbuf holds. Empty when there is none.
[[nodiscard]] LibraryObject<Library::DefinitionBase> ResbufChunkToDefinition(const resbuf* chunk);

} // namespace Orvel
