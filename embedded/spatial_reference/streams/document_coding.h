// Documents as bytes, without loss: a JSON tree whose common parts are references into a fixed vocabulary.
// See docs/formats/definition-stream.md.
#pragma once

#include <optional>

#include "embedded/spatial_reference/projjson/projjson.h"
#include "embedded/spatial_reference/streams/byte_coding.h"

namespace Embedded {

void writeDocument(ByteWriter& writer, const Projjson& document);

/// Nothing for bytes that are no document, are too deep or repeat a key.
std::optional<Projjson> readDocument(ByteReader& reader);

} // namespace Embedded
