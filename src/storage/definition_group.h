// A packed definition as resbufs: binary chunks between braces, or one chunk of its own.
// See docs/formats/definition-xrecord.md.
#pragma once

#include "platform/host.h"
#include "platform/spatial_reference.h"

namespace Orvel {

/// A new chain of "{" (1002), chunks of at most 127 bytes (310) and "}" (1002), which the caller releases with
/// qeutRelRb. Null when the definition cannot be packed and without memory.
[[nodiscard]] resbuf*
DefinitionToResbufGroup(const Zentara::Infrastructure::SpatialReference::DefinitionBase* definition);

/// The definition in the group that begins at a 1002 resbuf, the caller's to Destroy; null when there is none.
[[nodiscard]] Zentara::Infrastructure::SpatialReference::DefinitionBase* ResbufGroupToDefinition(const resbuf* group);

/// The definition that one 310 resbuf holds whole, the caller's to Destroy; null when there is none.
[[nodiscard]] Zentara::Infrastructure::SpatialReference::DefinitionBase* ResbufChunkToDefinition(const resbuf* chunk);

} // namespace Orvel
