#include "embedded/spatial_reference/streams/binary_stream.h"

#include <string>
#include <utility>

#include "embedded/base/memo_cache.h"
#include "embedded/spatial_reference/projjson/projjson_validation.h"
#include "embedded/spatial_reference/streams/byte_coding.h"
#include "embedded/spatial_reference/streams/document_coding.h"

namespace Embedded {
namespace {

constexpr unsigned kFirstByte = 0;
constexpr unsigned kVersion = 1;
constexpr int kChecksumLengthInBytes = 4;

std::optional<DefinitionType> streamedType(unsigned tag)
{
    const auto type = static_cast<DefinitionType>(tag);
    const bool known = type == DefinitionType::coordinateReferenceSystem || type == DefinitionType::datum ||
                       type == DefinitionType::ellipsoid;
    return known ? std::optional(type) : std::nullopt;
}

/// An empty code in the stream stands for the one that the document carries.
std::string storedCode(const DefinitionData& definition)
{
    return definition.codeUtf8 == codeOf(definition.document) ? std::string() : definition.codeUtf8;
}

std::optional<DefinitionData> readDefinition(ByteReader& reader)
{
    const auto tag = reader.byte();
    const auto type = tag ? streamedType(*tag) : std::nullopt;
    if (!type)
        return std::nullopt;
    auto code = reader.text();
    auto document = code ? readDocument(reader) : std::nullopt;
    if (!document || !isValidDocument(*type, *document))
        return std::nullopt;
    if (code->empty())
        code = codeOf(*document);
    if (code->empty())
        return std::nullopt;
    return DefinitionData(*type, *std::move(code), *std::move(document));
}

/// The bytes before the checksum, when it is right.
std::optional<std::string_view> withoutChecksum(std::string_view bytes)
{
    if (bytes.size() > kLongestBinaryStreamInBytes || bytes.size() <= kChecksumLengthInBytes)
        return std::nullopt;
    const auto body = bytes.substr(0, bytes.size() - kChecksumLengthInBytes);
    const auto checksum = ByteReader(bytes.substr(body.size())).littleEndian(kChecksumLengthInBytes);
    return checksum == crc32(body) ? std::optional(body) : std::nullopt;
}

std::optional<std::vector<DefinitionData>> readStream(std::string_view bytes)
{
    const auto body = withoutChecksum(bytes);
    if (!body)
        return std::nullopt;
    ByteReader reader(*body);
    if (reader.byte() != kFirstByte || reader.byte() != kVersion)
        return std::nullopt;
    const auto count = reader.count();
    std::vector<DefinitionData> definitions;
    for (std::size_t index = 0; count && index < *count; ++index) {
        auto definition = readDefinition(reader);
        if (!definition)
            return std::nullopt;
        definitions.push_back(*std::move(definition));
    }
    if (!count || reader.remaining() != 0)
        return std::nullopt;
    return definitions;
}

} // namespace

std::string binaryStreamFrom(const std::vector<DefinitionData>& definitions)
{
    ByteWriter writer;
    writer.byte(kFirstByte);
    writer.byte(kVersion);
    writer.varint(definitions.size());
    for (const DefinitionData& definition : definitions) {
        writer.byte(static_cast<unsigned>(definition.type));
        writer.text(storedCode(definition));
        writeDocument(writer, definition.document);
    }
    writer.littleEndian(crc32(writer.bytes()), kChecksumLengthInBytes);
    return writer.bytes();
}

std::optional<std::vector<DefinitionData>> definitionsFromBinaryStream(std::string_view bytes)
{
    using Definitions = std::optional<std::vector<DefinitionData>>;
    static MemoCache<std::string, Definitions> streams;
    return streams.getOrCompute(
        bytes, [bytes] { return readStream(bytes); }, [](const Definitions& read) { return read.has_value(); });
}

} // namespace Embedded
