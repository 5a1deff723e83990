#include "platform/spatial_reference/definition_stream.h"

#include <algorithm>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "embedded/spatial_reference/definitions/library_call.h"
#include "embedded/spatial_reference/definitions/library_object.h"
#include "embedded/spatial_reference/projjson/definition_data.h"
#include "embedded/spatial_reference/streams/definition_stream_coding.h"
#include "embedded/spatial_reference/streams/definition_text.h"

namespace Zentara::Infrastructure::SpatialReference {

using Embedded::catchJsonErrors;
using Embedded::injectedStatus;

struct DefinitionStreamData {
    std::vector<DefinitionData> definitions;
};

namespace {

std::string_view asText(const unsigned char* bytes, std::size_t lengthInBytes)
{
    return {reinterpret_cast<const char*>(bytes), lengthInBytes};
}

bool isStreamable(const DefinitionData& data)
{
    return data.type <= Embedded::DefinitionType::ellipsoid;
}

/// Copies the definitions into a new array. `result` stays as it was when one of them cannot be added.
Status copyTo(const std::vector<DefinitionData>& definitions, DefinitionBaseArray*& result)
{
    Embedded::LibraryHolder<DefinitionBaseArray> array(new DefinitionBaseArray);
    for (const DefinitionData& data : definitions) {
        Embedded::LibraryHolder<DefinitionBase> definition = Embedded::makeDefinition(data);
        if (const Status status = array->Add(definition.get()); status != statusOk)
            return status;
        std::ignore = definition.release(); // The array owns the definition now.
    }
    result = array.release();
    return statusOk;
}

bool isNewestSchema(int schemaVersion)
{
    return schemaVersion == -1 || schemaVersion == Embedded::kDefinitionTextVersion;
}

} // namespace

DefinitionStream::DefinitionStream() : data_(new DefinitionStreamData)
{
}

DefinitionStream::~DefinitionStream()
{
    delete data_;
}

Status DefinitionStream::CreateInstance(DefinitionStream*& stream)
{
    stream = nullptr;
    if (const auto failure = injectedStatus("DefinitionStream::CreateInstance", statusOutOfMemory))
        return *failure;
    stream = new DefinitionStream;
    return statusOk;
}

Status DefinitionStream::Add(const DefinitionBase* definition)
{
    if (const auto failure = injectedStatus("DefinitionStream::Add", statusOutOfMemory))
        return *failure;
    if (!definition)
        return statusInvalidArgument;
    if (!isStreamable(definition->data()))
        return statusUnsupported;
    data_->definitions.push_back(definition->data());
    return statusOk;
}

Status DefinitionStream::Write(unsigned char* buffer, std::size_t& lengthInBytes, SerializationFormat format,
                               int flags) const
{
    if (const auto failure = injectedStatus("DefinitionStream::Write"))
        return *failure;
    if (!buffer || flags != 0)
        return statusInvalidArgument;
    if (format != formatBinary)
        return statusUnsupported;
    return catchJsonErrors(statusFailed, [&] {
        const std::string bytes = Embedded::encodeDefinitionStream(data_->definitions);
        if (bytes.size() > std::min(lengthInBytes, Embedded::kLongestDefinitionStreamInBytes))
            return statusBufferTooSmall;
        std::ranges::copy(bytes, buffer);
        lengthInBytes = bytes.size();
        return statusOk;
    });
}

Status DefinitionStream::Read(const unsigned char* bytes, std::size_t lengthInBytes, SerializationFormat format,
                              int flags)
{
    if (const auto failure = injectedStatus("DefinitionStream::Read"))
        return *failure;
    if (!bytes || flags != 1)
        return statusInvalidArgument;
    if (format != formatBinary)
        return statusUnsupported;
    data_->definitions.clear();
    return catchJsonErrors(statusUnreadable, [&] {
        auto definitions = Embedded::decodeDefinitionStream(asText(bytes, lengthInBytes));
        if (!definitions)
            return Embedded::statusOf(definitions.error());
        data_->definitions = *std::move(definitions);
        return statusOk;
    });
}

Status DefinitionStream::GetDefinitions(DefinitionBaseArray*& definitions) const
{
    definitions = nullptr;
    if (const auto failure = injectedStatus("DefinitionStream::GetDefinitions", statusOutOfMemory))
        return *failure;
    return copyTo(data_->definitions, definitions);
}

Status DefinitionStream::Serialize_s(const DefinitionBase* definition, unsigned char* buffer,
                                     std::uint64_t bufferLengthInBytes, SerializationFormat format, int schemaVersion,
                                     bool includeDependents)
{
    if (const auto failure = injectedStatus("DefinitionStream::Serialize_s"))
        return *failure;
    if (!definition || !buffer)
        return statusInvalidArgument;
    if (format != formatText || !isNewestSchema(schemaVersion) || !isStreamable(definition->data()))
        return statusUnsupported;
    return catchJsonErrors(statusFailed, [&] {
        const std::string bytes = Embedded::encodeDefinitionText(definition->data(), includeDependents);
        if (bytes.size() > bufferLengthInBytes)
            return statusBufferTooSmall;
        std::ranges::copy(bytes, buffer);
        return statusOk;
    });
}

Status DefinitionStream::Deserialize_s(DefinitionBaseArray*& definitions, const unsigned char* bytes,
                                       std::uint64_t lengthInBytes, SerializationFormat format, int schemaVersion)
{
    definitions = nullptr;
    if (const auto failure = injectedStatus("DefinitionStream::Deserialize_s"))
        return *failure;
    if (!bytes)
        return statusNullText;
    if (format != formatAutomatic || !isNewestSchema(schemaVersion))
        return statusUnsupported;
    return catchJsonErrors(statusUnreadable, [&] {
        const auto decoded = Embedded::decodeDefinitionText(asText(bytes, lengthInBytes));
        return decoded ? copyTo(*decoded, definitions) : Embedded::statusOf(decoded.error());
    });
}

} // namespace Zentara::Infrastructure::SpatialReference
