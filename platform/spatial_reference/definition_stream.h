// Definitions as bytes: a compact binary stream, and a text.
#pragma once

#include <cstddef>
#include <cstdint>

#include "definition.h"
#include "definition_array.h"

namespace Zentara::Infrastructure::SpatialReference {

enum SerializationFormat : int {
    formatAutomatic = 0, // for reading: the text form of any version
    formatBinary = 2,    // one definition or more, compact; the first byte is zero
    formatText = 4       // a text that a person can read, as UTF-16 little-endian
};

struct DefinitionStreamData;

class ZSR_API DefinitionStream final : public Object {
public:
    DefinitionStream();
    /// Makes an empty stream, which the caller releases with Destroy.
    static Status CreateInstance(DefinitionStream*& stream);

    /// Adds a copy of the definition.
    Status Add(const DefinitionBase* definition);
    /// Writes the definitions of the stream. `lengthInBytes` is the buffer's length before the call and the written
    /// length after it. With statusBufferTooSmall nothing is written and the length is unchanged. `flags` is 0.
    Status Write(unsigned char* buffer, std::size_t& lengthInBytes, SerializationFormat format, int flags) const;
    /// Replaces the contents by the definitions in the bytes, without using the catalog. With statusUnreadable the
    /// stream is empty. `flags` is 1.
    Status Read(const unsigned char* bytes, std::size_t lengthInBytes, SerializationFormat format, int flags);
    /// Returns a new array with copies of the stream's definitions, which the caller owns.
    Status GetDefinitions(DefinitionBaseArray*& definitions) const;

    /// Writes one definition as UTF-16 little-endian text with its terminating NUL into the buffer.
    /// `schemaVersion` is -1 for the newest. With `includeDependents` the text holds the definition's datum and
    /// ellipsoid as definitions of their own after it. With statusBufferTooSmall nothing is
    /// written.
    static Status Serialize_s(const DefinitionBase* definition, unsigned char* buffer,
                              std::uint64_t bufferLengthInBytes, SerializationFormat format, int schemaVersion,
                              bool includeDependents);
    /// Reads such a text, whose length includes the NUL, into a new array that the caller owns. Null on failure.
    static Status Deserialize_s(DefinitionBaseArray*& definitions, const unsigned char* bytes,
                                std::uint64_t lengthInBytes, SerializationFormat format, int schemaVersion);

protected:
    ~DefinitionStream() override;

private:
    DefinitionStreamData* data_;
};

} // namespace Zentara::Infrastructure::SpatialReference
