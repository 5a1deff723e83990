// What holds of every definition that was read from anything: it can be written, and what is written is final.
#pragma once

#include "storage/library_holder.h"

namespace Fuzz {

using DefinitionHolder = Orvel::LibraryObject<Orvel::Library::DefinitionBase>;

/// Packs it, reads that and packs it again, which gives the same bytes.
void requirePackedRoundTrip(const Orvel::Library::DefinitionBase& definition);
/// The same with its text.
void requireTextRoundTrip(const Orvel::Library::DefinitionBase& definition);

} // namespace Fuzz
