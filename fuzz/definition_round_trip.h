// Checks that every definition that was read can be written, and that writing it again gives the same bytes.
#pragma once

#include "storage/library_holder.h"

namespace Fuzz {

using DefinitionHolder = Orvel::LibraryObject<Orvel::Library::DefinitionBase>;

/// Packs the definition, reads the bytes and packs it again. Both must be the same bytes.
void requirePackedRoundTrip(const Orvel::Library::DefinitionBase& definition);
/// The same with its text.
void requireTextRoundTrip(const Orvel::Library::DefinitionBase& definition);

} // namespace Fuzz
