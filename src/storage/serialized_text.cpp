#include "storage/serialized_text.h"

#include <array>
#include <vector>

#include "storage/utf16le.h"

namespace Orvel {
namespace {

constexpr std::size_t kLargestTextInBytes = 65536;
constexpr std::size_t kNulLengthInBytes = 2;
constexpr int kNewestSchema = -1;

Library::Status deserialize(LibraryObject<Library::DefinitionBaseArray>& definitions, const unsigned char* text,
                            std::size_t lengthWithNul)
{
    if (lengthWithNul == kNulLengthInBytes)
        return Library::statusEmptyText;
    return Library::DefinitionStream::Deserialize_s(definitions.put(), text, lengthWithNul, Library::formatAutomatic,
                                                    kNewestSchema);
}

} // namespace

Library::Status SerializeToWideText(std::wstring& text, const Library::DefinitionBase* definition,
                                    bool includeDependents)
{
    std::array<unsigned char, kLargestTextInBytes> buffer{};
    const Library::Status status = Library::DefinitionStream::Serialize_s(
        definition, buffer.data(), buffer.size(), Library::formatText, kNewestSchema, includeDependents);
    if (status == Library::statusOk)
        text = decodeUtf16le(buffer.data(), buffer.size());
    return status;
}

Library::Status DeserializeWideText(LibraryObject<Library::DefinitionBaseArray>& definitions, const wchar_t* text)
{
    if (text == nullptr)
        return Library::statusNullText;
    const std::vector<unsigned char> bytes = encodeUtf16le(text);
    return deserialize(definitions, bytes.data(), bytes.size());
}

Library::Status deserializeUtf16leText(LibraryObject<Library::DefinitionBaseArray>& definitions,
                                       const unsigned char* text)
{
    if (text == nullptr)
        return Library::statusNullText;
    return deserialize(definitions, text, utf16leLength(text) + kNulLengthInBytes);
}

} // namespace Orvel
