#include "spatial_reference.h"

#include "core/text.h"
#include "survey/formats.h"

#include <algorithm>

namespace Zentara::Infrastructure::SpatialReference {

namespace {

Status toStatus(Survey::Answer answer)
{
    switch (answer) {
    case Survey::Answer::ok:
        return statusOk;
    case Survey::Answer::unknown:
        return statusNotFound;
    case Survey::Answer::lossy:
        return statusInexact;
    case Survey::Answer::noRoom:
        return statusNoRoom;
    case Survey::Answer::badText:
        return statusBadText;
    case Survey::Answer::trialFailure:
        break;
    }
    return statusTrialFailure;
}

Status makeArray(const Survey::Definitions& values, DefinitionBaseArray*& array)
{
    array = Core::failsNow() ? nullptr : DefinitionBaseArray::make(values);
    return array ? statusOk : statusTrialFailure;
}

} // namespace

// Arrays

DefinitionBaseArray::~DefinitionBaseArray()
{
    for (const DefinitionBase* definition : m_definitions)
        Destroy(definition);
}

Status DefinitionBaseArray::CreateInstance(DefinitionBaseArray*& array)
{
    return makeArray({}, array);
}

DefinitionBaseArray* DefinitionBaseArray::make(const Survey::Definitions& values)
{
    auto* const array = new DefinitionBaseArray();
    for (const Survey::Definition& value : values)
        array->m_definitions.push_back(DefinitionBase::make(value));
    return array;
}

Status DefinitionBaseArray::Add(DefinitionBase* definition)
{
    if (!definition || Core::failsNow())
        return statusFailed;
    m_definitions.push_back(definition);
    return statusOk;
}

DefinitionBase* DefinitionBaseArray::Remove(int index)
{
    if (index < 0 || index >= GetCount())
        return nullptr;
    const auto place = m_definitions.begin() + index;
    DefinitionBase* const definition = *place;
    m_definitions.erase(place);
    return definition;
}

// Bytes

Status DefinitionStream::CreateInstance(DefinitionStream*& stream)
{
    stream = Core::failsNow() ? nullptr : new DefinitionStream();
    return stream ? statusOk : statusTrialFailure;
}

Status DefinitionStream::Add(const DefinitionBase* definition)
{
    const auto value = definition ? definition->value() : std::nullopt;
    if (!value || Core::failsNow())
        return statusFailed;
    m_definitions.push_back(*value);
    return statusOk;
}

Status DefinitionStream::Write(unsigned char* buffer, std::size_t& lengthInBytes, SerializationFormat format, int) const
{
    const std::vector<std::uint8_t> bytes = Survey::writeBytes(m_definitions);
    if (format != formatBinary || Core::failsNow())
        return statusFailed;
    if (bytes.size() > lengthInBytes)
        return toStatus(Survey::Answer::noRoom);
    std::copy(bytes.begin(), bytes.end(), buffer);
    lengthInBytes = bytes.size();
    return statusOk;
}

Status DefinitionStream::Read(const unsigned char* bytes, std::size_t lengthInBytes, SerializationFormat format, int)
{
    return format == formatBinary ? toStatus(Survey::readBytes(bytes, lengthInBytes, m_definitions)) : statusFailed;
}

Status DefinitionStream::GetDefinitions(DefinitionBaseArray*& definitions) const
{
    return makeArray(m_definitions, definitions);
}

// Texts

Status DefinitionStream::Serialize_s(const DefinitionBase* definition, unsigned char* buffer,
                                     std::uint64_t bufferLengthInBytes, SerializationFormat format, int,
                                     bool includeDependents)
{
    const auto value = definition ? definition->value() : std::nullopt;
    if (!value || format != formatText || Core::failsNow())
        return statusFailed;
    const Survey::Definitions values = includeDependents ? Survey::withDependents(*value) : Survey::Definitions{*value};
    const std::u16string text = Core::toUtf16(Survey::writeText(values));
    if ((text.size() + 1) * 2 > bufferLengthInBytes)
        return statusNoRoom;
    // The text's own NUL is one of its characters here.
    for (std::size_t at = 0; at <= text.size(); ++at) {
        buffer[2 * at] = static_cast<unsigned char>(text.c_str()[at] & 0xFF);
        buffer[2 * at + 1] = static_cast<unsigned char>(text.c_str()[at] >> 8);
    }
    return statusOk;
}

Status DefinitionStream::Deserialize_s(DefinitionBaseArray*& definitions, const unsigned char* bytes,
                                       std::uint64_t lengthInBytes, SerializationFormat format, int)
{
    definitions = nullptr;
    if (format != formatAutomatic && format != formatText)
        return statusFailed;
    std::u16string text;
    for (std::uint64_t at = 0; at + 1 < lengthInBytes && (bytes[at] || bytes[at + 1]); at += 2)
        text.push_back(static_cast<char16_t>(bytes[at] | (bytes[at + 1] << 8)));
    Survey::Definitions values;
    const Survey::Answer answer = Survey::readText(Core::toUtf8(text), values);
    return answer == Survey::Answer::ok ? makeArray(values, definitions) : toStatus(answer);
}

Status FormatConverter::DefinitionToWkt_s(const CoordinateReferenceSystemDefinition* definition, WktFlavor,
                                          wchar_t* buffer, std::size_t bufferCharacters)
{
    std::string text;
    if (!definition || Core::failsNow())
        return statusFailed;
    const Survey::Answer answer = Survey::writeWellKnownText(definition->system(), text);
    const std::wstring wide = Core::toWide(text);
    if (answer != Survey::Answer::ok && answer != Survey::Answer::lossy)
        return toStatus(answer);
    if (wide.size() >= bufferCharacters)
        return statusNoRoom;
    buffer[wide.copy(buffer, wide.size())] = L'\0';
    return toStatus(answer);
}

} // namespace Zentara::Infrastructure::SpatialReference
