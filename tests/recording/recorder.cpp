#include "recording/recorder.h"

#include <algorithm>

#include "embedded/base/text.h"
#include "embedded/diagnostics/resource_counters.h"
#include "recording/recorded_call.h"

namespace Tests::Recording {
namespace {

struct Record {
    Answers answers;
    std::vector<Call> calls;
    std::vector<std::vector<Definition>> stored;
};

Record& record()
{
    static Record current;
    return current;
}

std::string hexadecimal(unsigned char byte)
{
    constexpr const char* kDigits = "0123456789abcdef";
    return {kDigits[byte >> 4], kDigits[byte & 0xF]};
}

} // namespace

Answers& answers()
{
    return record().answers;
}

const std::vector<Call>& calls()
{
    return record().calls;
}

std::vector<std::string> findCalls(const std::string& name)
{
    std::vector<std::string> lines;
    for (const Call& call : calls()) {
        if (call.text.starts_with(name + "("))
            lines.push_back(call.text);
    }
    return lines;
}

void forget()
{
    record() = Record();
}

Library::Status record(const std::string& name, std::initializer_list<std::string> arguments)
{
    std::string text;
    for (const std::string& argument : arguments)
        text += (text.empty() ? "" : ", ") + argument;
    const long openObjects = Embedded::ResourceCounters::now()[Embedded::ResourceKind::openObject];
    record().calls.push_back({name + "(" + text + ")", openObjects});
    const auto planned = answers().statuses.find(name);
    return planned != answers().statuses.end() ? planned->second : Library::statusOk;
}

std::string formatArgument(const Library::DefinitionBase* definition)
{
    return definition != nullptr ? Embedded::utf8FromWide(definition->data().definition.code) : "null";
}

std::string formatArgument(const wchar_t* text)
{
    return text != nullptr ? '"' + Embedded::utf8FromWide(text) + '"' : "null";
}

std::string formatArgument(const unsigned char* bytes, std::size_t length)
{
    std::string text;
    std::for_each(bytes, bytes + length, [&](unsigned char byte) { text += hexadecimal(byte); });
    return text;
}

std::string bufferText(const unsigned char* buffer, std::size_t length)
{
    const bool zero = std::all_of(buffer, buffer + length, [](unsigned char byte) { return byte == 0; });
    return std::to_string(length) + (zero ? " zero bytes" : " bytes that are not all zero");
}

std::size_t store(const std::vector<Definition>& definitions)
{
    record().stored.push_back(definitions);
    return record().stored.size();
}

std::vector<Definition> stored(std::size_t number)
{
    return number >= 1 && number <= record().stored.size() ? record().stored[number - 1] : std::vector<Definition>();
}

Library::DefinitionBase* newDefinition(const Definition& definition)
{
    auto* const data = new Library::DefinitionData{definition};
    switch (definition.type) {
    case Type::system:
        return new Library::CoordinateReferenceSystemDefinition(data);
    case Type::datum:
        return new Library::DatumDefinition(data);
    case Type::ellipsoid:
        return new Library::EllipsoidDefinition(data);
    case Type::transformation:
        return new Library::GeodeticTransformationDefinition(data);
    case Type::path:
        return new Library::GeodeticPathDefinition(data);
    }
    return nullptr;
}

Library::CoordinateReferenceSystemDefinition* newSystem(const Definition& definition)
{
    return new Library::CoordinateReferenceSystemDefinition(new Library::DefinitionData{definition});
}

} // namespace Tests::Recording
