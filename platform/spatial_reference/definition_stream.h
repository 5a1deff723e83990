// Definitions as bytes: a compact binary stream, and a text.
#pragma once

#include <cstddef>
#include <cstdint>

#include "definition.h"
#include "definition_array.h"

namespace Zentara::Infrastructure::SpatialReference {

enum SerializationFormat : int {
    formatAutomatic = 0, // reading: the text form, whatever version wrote it
    formatBinary = 2,    // one definition or more, compact; the first byte is zero
    formatText = 4       // a text that a person can read, as UTF-16 little-endian
};

struct DefinitionStreamData;

class ZSR_API DefinitionStream final : public Object {
public:
    DefinitionStream();
    /// An empty stream, the caller's to Destroy.
    static Status CreateInstance(DefinitionStream*& stream);

    /// Adds a copy of the definition.
    Status Add(const DefinitionBase* definition);
    /// Writes the definitions that were added. `lengthInBytes` is the buffer's length before and the written length
    /// after. statusBufferTooSmall writes nothing and leaves the length. `flags` is 0.
    Status Write(unsigned char* buffer, std::size_t& lengthInBytes, SerializationFormat format, int flags) const;
    /// Replaces the contents by what the bytes hold, without the catalog's help. statusUnreadable leaves the stream
    /// empty. `flags` is 1.
    Status Read(const unsigned char* bytes, std::size_t lengthInBytes, SerializationFormat format, int flags);
    /// A new array of copies of the stream's definitions, the caller's.
    Status GetDefinitions(DefinitionBaseArray*& definitions) const;

    /// Writes one definition as UTF-16 little-endian text with its terminating NUL into the buffer.
    /// `schemaVersion` is -1 for the newest. With `includeDependents` the text holds the definition's datum and
    /// ellipsoid as definitions of their own after it. statusBufferTooSmall writes nothing.
    static Status Serialize_s(const DefinitionBase* definition, unsigned char* buffer,
                              std::uint64_t bufferLengthInBytes, SerializationFormat format, int schemaVersion,
                              bool includeDependents);
    /// Reads such a text, its NUL included in the length, into a new array that is the caller's; null on failure.
    static Status Deserialize_s(DefinitionBaseArray*& definitions, const unsigned char* bytes,
                                std::uint64_t lengthInBytes, SerializationFormat format, int schemaVersion);

protected:
    ~DefinitionStream() override;

private:
    DefinitionStreamData* data_;
};

} // namespace Zentara::Infrastructure::SpatialReference
