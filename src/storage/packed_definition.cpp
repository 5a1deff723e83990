#include "storage/packed_definition.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <tuple>

#include "storage/definition_class_id.h"
#include "storage/library_holder.h"
#include "storage/run_length.h"

namespace Orvel {
namespace {

constexpr std::size_t kLargestStream = 1024;
constexpr std::size_t kClassIdLength = std::tuple_size_v<ClassIdBytes>;
static_assert(kLongestPackedDefinition == (kClassIdLength + kLargestStream - 1) * 2);
constexpr int kWriteFlags = 0;
constexpr int kReadFlags = 1;

/// The definition's stream as the library writes it; empty on failure.
std::vector<unsigned char> streamBytesOf(const Library::DefinitionBase* definition)
{
    LibraryObject<Library::DefinitionStream> stream;
    if (Library::DefinitionStream::CreateInstance(stream.put()) != Library::statusOk || !stream)
        return {};
    if (stream->Add(definition) != Library::statusOk)
        return {};
    std::array<unsigned char, kLargestStream> buffer{};
    std::size_t length = buffer.size();
    if (stream->Write(buffer.data(), length, Library::formatBinary, kWriteFlags) != Library::statusOk)
        return {};
    return {buffer.begin(), buffer.begin() + static_cast<std::ptrdiff_t>(std::min(length, buffer.size()))};
}

std::vector<unsigned char> packed(const std::vector<unsigned char>& unpacked)
{
    std::vector<unsigned char> bytes(PackedSize(unpacked.data(), unpacked.size()));
    bytes.resize(PackRuns(unpacked.data(), unpacked.size(), bytes.data(), bytes.size()));
    return bytes;
}

/// Empty where the bytes cannot be unpacked.
std::vector<unsigned char> unpacked(const unsigned char* bytes, std::size_t length)
{
    std::vector<unsigned char> form(UnpackedSize(bytes, length));
    form.resize(UnpackRuns(bytes, length, form.data(), form.size()));
    return form;
}

/// The one definition that the stream holds. Whether reading reported success does not matter: what it yielded does.
Library::DefinitionBase* definitionIn(const unsigned char* streamBytes, std::size_t length)
{
    LibraryObject<Library::DefinitionStream> stream;
    if (Library::DefinitionStream::CreateInstance(stream.put()) != Library::statusOk || !stream)
        return nullptr;
    static_cast<void>(stream->Read(streamBytes, length, Library::formatBinary, kReadFlags)); // see above
    LibraryObject<Library::DefinitionBaseArray> definitions;
    if (stream->GetDefinitions(definitions.put()) != Library::statusOk || !definitions)
        return nullptr;
    return definitions->GetCount() == 1 ? definitions->Remove(0) : nullptr;
}

} // namespace

bool EncodeDefinitionBytes(const Library::DefinitionBase* definition, std::vector<unsigned char>& bytes)
{
    bytes.clear();
    const auto classId = DefinitionKindClsid(definition);
    if (!classId)
        return false;
    const std::vector<unsigned char> stream = streamBytesOf(definition);
    if (stream.empty())
        return false;
    std::vector<unsigned char> form(classId->begin(), classId->end());
    form.insert(form.end(), stream.begin() + 1, stream.end()); // the stream's first byte is zero and is not stored
    bytes = packed(form);
    return !bytes.empty();
}

Library::DefinitionBase* DecodeDefinitionBytes(const unsigned char* bytes, std::size_t length)
{
    if (bytes == nullptr)
        return nullptr;
    std::vector<unsigned char> form = unpacked(bytes, length);
    if (form.size() <= kClassIdLength)
        return nullptr;
    ClassIdBytes classId{};
    std::copy_n(form.begin(), kClassIdLength, classId.begin());
    if (!IsDefinitionKindClsid(classId))
        return nullptr;
    form[kClassIdLength - 1] = 0; // the stream's first byte, which is not stored, in the place of the identifier's last
    return definitionIn(form.data() + kClassIdLength - 1, form.size() - kClassIdLength + 1);
}

} // namespace Orvel
