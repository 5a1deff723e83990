#include "storage/packed_definition.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <tuple>

#include "storage/definition_class_id.h"
#include "storage/ignore_result.h"
#include "storage/run_length.h"

namespace Orvel {
namespace {

constexpr std::size_t kLargestStream = 1024;
constexpr std::size_t kClassIdLength = std::tuple_size_v<ClassIdBytes>;
constexpr std::size_t kBeforeStream = kClassIdLength - 1; // bytes of the packed form before its stream
constexpr int kWriteFlags = 0;
constexpr int kReadFlags = 1;

/// Writes the definition as a stream of the library into the zeroed buffer. Returns the stream's length: 0 on failure,
/// and when the stream is longer than the buffer.
std::size_t writeStream(const Library::DefinitionBase* definition, unsigned char* buffer)
{
    LibraryObject<Library::DefinitionStream> stream;
    if (Library::DefinitionStream::CreateInstance(stream.put()) != Library::statusOk || !stream)
        return 0;
    if (stream->Add(definition) != Library::statusOk)
        return 0;
    std::size_t length = kLargestStream;
    if (stream->Write(buffer, length, Library::formatBinary, kWriteFlags) != Library::statusOk ||
        length > kLargestStream)
        return 0;
    return length;
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

/// Reads the one definition that the stream holds, whatever status the reading returns.
LibraryObject<Library::DefinitionBase> readStream(const unsigned char* streamBytes, std::size_t length)
{
    LibraryObject<Library::DefinitionStream> stream;
    if (Library::DefinitionStream::CreateInstance(stream.put()) != Library::statusOk || !stream)
        return {};
    // The definitions decide.
    ignoreResult([&] { return stream->Read(streamBytes, length, Library::formatBinary, kReadFlags); });
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
    // The stream's first byte is zero and is not stored: the identifier's last byte takes its place.
    std::array<unsigned char, kBeforeStream + kLargestStream> form{};
    const std::size_t length = writeStream(definition, form.data() + kBeforeStream);
    if (length == 0)
        return false;
    std::copy(classId->begin(), classId->end(), form.begin());
    bytes = Pack(form.data(), kBeforeStream + length);
    return true;
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
    form[kBeforeStream] = 0; // replaces the identifier's last byte by the stream's first, which is not stored
    return readStream(form.data() + kBeforeStream, form.size() - kBeforeStream);
}

} // namespace Orvel
