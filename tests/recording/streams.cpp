// Arrays, streams and texts of the recording library. A stream is {0, number} and a text is "#number", with the number
// of the stored definitions.
#include <algorithm>
#include <string_view>
#include <utility>

#include "recording/recorded_call.h"

namespace Zentara::Infrastructure::SpatialReference {

using Tests::Recording::Definition;

struct DefinitionArrayData {
    std::vector<DefinitionBase*> items;
};

struct DefinitionStreamData {
    std::vector<Definition> definitions;
};

namespace {

using Bytes = std::vector<unsigned char>;
using Tests::Recording::answers;
using Tests::Recording::bufferText;
using Tests::Recording::formatArgument;
using Tests::Recording::record;
using Tests::Recording::recordCreation;

std::string formatName(SerializationFormat format)
{
    return "format " + std::to_string(format);
}

/// The bytes that the test set, or else the number of the definitions.
Bytes write(unsigned char* buffer, std::size_t capacity, const Bytes& own)
{
    Bytes bytes = answers().written.value_or(own);
    std::copy_n(bytes.begin(), std::min(bytes.size(), capacity), buffer);
    return bytes;
}

unsigned char storeDefinitions(const std::vector<Definition>& definitions)
{
    return static_cast<unsigned char>(Tests::Recording::store(definitions));
}

/// The items that the next array begins with.
std::vector<Definition> upcoming;

DefinitionBaseArray* newArray(const std::vector<Definition>& definitions)
{
    upcoming = definitions;
    return new DefinitionBaseArray;
}

} // namespace

DefinitionBaseArray::DefinitionBaseArray() : data_(new DefinitionArrayData)
{
    for (const Definition& each : std::exchange(upcoming, {}))
        data_->items.push_back(Tests::Recording::newDefinition(each));
}

DefinitionBaseArray::~DefinitionBaseArray()
{
    for (const DefinitionBase* item : data_->items)
        Destroy(item);
    delete data_;
}

Status DefinitionBaseArray::CreateInstance(DefinitionBaseArray*& array)
{
    return recordCreation("DefinitionBaseArray::CreateInstance", {}, array, [] { return new DefinitionBaseArray; });
}

int DefinitionBaseArray::GetCount() const
{
    return static_cast<int>(data_->items.size());
}

Status DefinitionBaseArray::Add(DefinitionBase* definition)
{
    const Status status = record("DefinitionBaseArray::Add", {formatArgument(definition)});
    if (status == statusOk)
        data_->items.push_back(definition);
    return status;
}

const DefinitionBase* DefinitionBaseArray::GetItem(int index) const
{
    return index >= 0 && index < GetCount() ? data_->items[static_cast<std::size_t>(index)] : nullptr;
}

DefinitionBase* DefinitionBaseArray::Remove(int index)
{
    if (index < 0 || index >= GetCount())
        return nullptr;
    const auto place = data_->items.begin() + index;
    DefinitionBase* const definition = *place;
    data_->items.erase(place);
    return definition;
}

DefinitionStream::DefinitionStream() : data_(new DefinitionStreamData)
{
}

DefinitionStream::~DefinitionStream()
{
    delete data_;
}

Status DefinitionStream::CreateInstance(DefinitionStream*& stream)
{
    return recordCreation("DefinitionStream::CreateInstance", {}, stream, [] { return new DefinitionStream; });
}

Status DefinitionStream::Add(const DefinitionBase* definition)
{
    const Status status = record("DefinitionStream::Add", {formatArgument(definition)});
    data_->definitions.push_back(definition->data().definition);
    return status;
}

Status DefinitionStream::Write(unsigned char* buffer, std::size_t& lengthInBytes, SerializationFormat format,
                               int flags) const
{
    const Status status = record("DefinitionStream::Write", {bufferText(buffer, lengthInBytes), formatName(format),
                                                             "flags " + std::to_string(flags)});
    const Bytes written = write(buffer, lengthInBytes, {0, storeDefinitions(data_->definitions)});
    lengthInBytes = answers().writtenLength.value_or(written.size());
    return status;
}

Status DefinitionStream::Read(const unsigned char* bytes, std::size_t lengthInBytes, SerializationFormat format,
                              int flags)
{
    const Status status = record("DefinitionStream::Read", {formatArgument(bytes, lengthInBytes), formatName(format),
                                                            "flags " + std::to_string(flags)});
    data_->definitions = Tests::Recording::stored(lengthInBytes >= 2 ? bytes[1] : 0);
    return status;
}

Status DefinitionStream::GetDefinitions(DefinitionBaseArray*& definitions) const
{
    return recordCreation("DefinitionStream::GetDefinitions", {}, definitions,
                          [&] { return newArray(data_->definitions); });
}

Status DefinitionStream::Serialize_s(const DefinitionBase* definition, unsigned char* buffer,
                                     std::uint64_t bufferLengthInBytes, SerializationFormat format, int schemaVersion,
                                     bool includeDependents)
{
    const Status status =
        record("DefinitionStream::Serialize_s", {formatArgument(definition), bufferText(buffer, bufferLengthInBytes),
                                                 formatName(format), "schema " + std::to_string(schemaVersion),
                                                 includeDependents ? "with dependents" : "without dependents"});
    static_cast<void>(
        write(buffer, bufferLengthInBytes, {'#', 0, storeDefinitions({definition->data().definition}), 0, 0, 0}));
    return status;
}

Status DefinitionStream::Deserialize_s(DefinitionBaseArray*& definitions, const unsigned char* bytes,
                                       std::uint64_t lengthInBytes, SerializationFormat format, int schemaVersion)
{
    return recordCreation(
        "DefinitionStream::Deserialize_s",
        {formatArgument(bytes, lengthInBytes), formatName(format), "schema " + std::to_string(schemaVersion)},
        definitions,
        [&] { return newArray(Tests::Recording::stored(lengthInBytes >= 4 && bytes[0] == '#' ? bytes[2] : 0)); });
}

Status FormatConverter::DefinitionToWkt_s(const CoordinateReferenceSystemDefinition* definition, WktFlavor flavor,
                                          wchar_t* buffer, std::size_t bufferCharacters)
{
    const Status status =
        record("FormatConverter::DefinitionToWkt_s", {formatArgument(definition), "flavor " + std::to_string(flavor),
                                                      std::to_string(bufferCharacters) + " characters"});
    constexpr std::wstring_view kWkt(L"WKT\0", 4);
    kWkt.copy(buffer, bufferCharacters);
    return status;
}

} // namespace Zentara::Infrastructure::SpatialReference
