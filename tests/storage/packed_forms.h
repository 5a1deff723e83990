// Packed definitions built from their parts with the plain packer of these tests.
#pragma once

#include <initializer_list>
#include <vector>

#include "storage/byte_patterns.h"
#include "support/library_definitions.h"

namespace Tests {

extern const Bytes kSystemClassId;
extern const Bytes kDatumClassId;
extern const Bytes kEllipsoidClassId;

/// The library's binary stream of the definitions, its first byte included.
Bytes streamOf(std::initializer_list<const Library::DefinitionBase*> definitions);
/// The class identifier and the stream without its first byte, packed.
Bytes packedForm(const Bytes& classId, const Bytes& stream);

/// The definition as the module packs it. Fails the test when the module cannot.
Bytes encoded(const Library::DefinitionBase* definition);

/// The packed bytes in one braced group of chunks of 127 bytes, and as one chunk of their own.
Items groupOf(const Bytes& packedBytes);
Items groupOf(const Library::DefinitionBase* definition);
Items chunkOf(const Library::DefinitionBase* definition);
Items joinedItems(std::initializer_list<Items> parts);

} // namespace Tests
