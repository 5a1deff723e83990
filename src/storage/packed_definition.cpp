#include "storage/packed_definition.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <tuple>

#include "storage/definition_class_id.h"
#include "storage/run_length.h"

namespace Orvel {
namespace {

constexpr std::size_t kLargestStream = 1024;
constexpr std::size_t kClassIdLength = std::tuple_size_v<ClassIdBytes>;
constexpr int kWriteFlags = 0;
constexpr int kReadFlags = 1;

/// The definition's stream as the library writes it; empty on failure, and when it is longer than the buffer.
std::vector<unsigned char> streamBytesOf(const Library::DefinitionBase* definition)
{
    LibraryObject<Library::DefinitionStream> stream;
    if (Library::DefinitionStream::CreateInstance(stream.put()) != Library::statusOk || !stream)
        return {};
    if (stream->Add(definition) != Library::statusOk)
        return {};
    std::array<unsigned char, kLargestStream> buffer{};
    std::size_t length = buffer.size();
    if (stream->Write(buffer.data(), length, Library::formatBinary, kWriteFlags) != Library::statusOk ||
        length > buffer.size())
        return {};
    return {buffer.begin(), buffer.begin() + static_cast<std::ptrdiff_t>(length)};
}

// The two pairs of functions below walk their input alike. That the lengths agree is checked all the same, because what
// is stored outlives the process.

/// Empty when the bytes cannot be packed.
std::vector<unsigned char> pack(const std::vector<unsigned char>& unpacked)
{
    std::vector<unsigned char> packed(PackedSize(unpacked.data(), unpacked.size()));
    const std::size_t written = PackRuns(unpacked.data(), unpacked.size(), packed.data(), packed.size());
    if (written != packed.size())
        return {};
    return packed;
}

/// Empty when the bytes cannot be unpacked.
std::vector<unsigned char> unpack(const unsigned char* bytes, std::size_t length)
{
    std::vector<unsigned char> unpacked(UnpackedSize(bytes, length));
    const std::size_t written = UnpackRuns(bytes, length, unpacked.data(), unpacked.size());
    if (written != unpacked.size())
        return {};
    return unpacked;
}

/// The one definition that the stream holds, whatever status the reading reports.
LibraryObject<Library::DefinitionBase> definitionIn(const unsigned char* streamBytes, std::size_t length)
{
    LibraryObject<Library::DefinitionStream> stream;
    if (Library::DefinitionStream::CreateInstance(stream.put()) != Library::statusOk || !stream)
        return {};
    static_cast<void>(stream->Read(streamBytes, length, Library::formatBinary, kReadFlags)); // what it yields decides
    LibraryObject<Library::DefinitionBaseArray> definitions;
    if (stream->GetDefinitions(definitions.put()) != Library::statusOk || !definitions || definitions->GetCount() != 1)
        return {};
    return LibraryObject<Library::DefinitionBase>(definitions->Remove(0));
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
    bytes = pack(form);
    return !bytes.empty();
}

LibraryObject<Library::DefinitionBase> DecodeDefinitionBytes(const unsigned char* bytes, std::size_t length)
{
    if (bytes == nullptr)
        return {};
    std::vector<unsigned char> form = unpack(bytes, length);
    if (form.size() <= kClassIdLength)
        return {};
    ClassIdBytes classId{};
    std::copy_n(form.begin(), kClassIdLength, classId.begin());
    if (!isDefinitionKindClsid(classId))
        return {};
    form[kClassIdLength - 1] = 0; // the stream's first byte, which is not stored, in the place of the identifier's last
    return definitionIn(form.data() + kClassIdLength - 1, form.size() - kClassIdLength + 1);
}

} // namespace Orvel
