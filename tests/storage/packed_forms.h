// Packed definitions that the tests build with their own packer.
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
Bytes writeStream(std::initializer_list<const Library::DefinitionBase*> definitions);
/// The class identifier and the stream without its first byte, packed.
Bytes packedForm(const Bytes& classId, const Bytes& stream);

/// The definition as the module packs it. Fails the test when the module cannot.
Bytes encoded(const Library::DefinitionBase* definition);

/// Makes a braced group with the packed bytes in chunks of 127 bytes.
Items makeGroup(const Bytes& packedBytes);
Items makeGroup(const Library::DefinitionBase* definition);
/// Makes one chunk of all packed bytes.
Items makeChunk(const Library::DefinitionBase* definition);
Items joinedItems(std::initializer_list<Items> parts);

} // namespace Tests
