#include "formats.h"

#include "../core/text.h"
#include "../core/trial.h"
#include "fields.h"

#include <algorithm>

namespace Survey {
namespace {

constexpr std::string_view firstLine = "survey definitions 1";

std::string escaped(std::string_view field)
{
    std::string text;
    for (const char character : field) {
        if (character == '\\' || character == '|' || character == '\n')
            text.push_back('\\');
        text.push_back(character == '\n' ? 'n' : character);
    }
    return text;
}

std::vector<std::string> cutLine(std::string_view line)
{
    std::vector<std::string> fields(1);
    for (std::size_t at = 0; at < line.size(); ++at) {
        if (line[at] == '|') {
            fields.emplace_back();
        } else if (line[at] == '\\' && at + 1 < line.size()) {
            ++at;
            fields.back().push_back(line[at] == 'n' ? '\n' : line[at]);
        } else {
            fields.back().push_back(line[at]);
        }
    }
    return fields;
}

std::string_view takeLine(std::string_view& text)
{
    const std::size_t end = text.find('\n');
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    return line;
}

template <class T>
std::optional<T> findIn(const Definitions& definitions, const std::string& code)
{
    for (const Definition& definition : definitions) {
        const T* const candidate = std::get_if<T>(&definition);
        if (candidate && !code.empty() && Core::sameCode(candidate->code, code))
            return *candidate;
    }
    return std::nullopt;
}

// Datums first, for a system copies its datum with the ellipsoid that this stands on.
void linkDefinitions(Definitions& definitions)
{
    for (Definition& definition : definitions) {
        if (auto* datum = std::get_if<Datum>(&definition))
            datum->ellipsoid = findIn<Ellipsoid>(definitions, datum->ellipsoidCode);
    }
    for (Definition& definition : definitions) {
        if (auto* system = std::get_if<System>(&definition)) {
            system->datum = findIn<Datum>(definitions, system->datumCode);
            system->ellipsoid = findIn<Ellipsoid>(definitions, system->ellipsoidCode);
        }
    }
}

void appendField(std::vector<std::uint8_t>& bytes, const std::string& field)
{
    const std::size_t length = std::min<std::size_t>(field.size(), 0xFFFF);
    bytes.push_back(static_cast<std::uint8_t>(length & 0xFF));
    bytes.push_back(static_cast<std::uint8_t>(length >> 8));
    bytes.insert(bytes.end(), field.begin(), field.begin() + static_cast<std::ptrdiff_t>(length));
}

bool takeField(const std::uint8_t*& at, const std::uint8_t* end, std::string& field)
{
    if (end - at < 2)
        return false;
    const std::ptrdiff_t length = at[0] | (at[1] << 8);
    if (end - at - 2 < length)
        return false;
    field.assign(at + 2, at + 2 + length);
    at += 2 + length;
    return true;
}

} // namespace

std::string writeText(const Definitions& definitions)
{
    std::string text(firstLine);
    for (const Definition& definition : definitions) {
        char separator = '\n';
        for (const std::string& field : fieldsFor(definition)) {
            text.push_back(separator);
            text += escaped(field);
            separator = '|';
        }
    }
    return text;
}

Answer readText(std::string_view text, Definitions& definitions)
{
    definitions.clear();
    if (Core::failsNow())
        return Answer::trialFailure;
    if (takeLine(text) != firstLine)
        return Answer::badText;
    while (!text.empty()) {
        auto definition = definitionFrom(cutLine(takeLine(text)));
        if (!definition)
            return Answer::badText;
        definitions.push_back(std::move(*definition));
    }
    linkDefinitions(definitions);
    return Answer::ok;
}

std::vector<std::uint8_t> writeBytes(const Definitions& definitions)
{
    std::vector<std::uint8_t> bytes{0};
    for (const Definition& definition : definitions) {
        const std::vector<std::string> fields = fieldsFor(definition);
        bytes.push_back(static_cast<std::uint8_t>(fields.size()));
        for (const std::string& field : fields)
            appendField(bytes, field);
    }
    return bytes;
}

Answer readBytes(const std::uint8_t* bytes, std::size_t lengthInBytes, Definitions& definitions)
{
    definitions.clear();
    if (Core::failsNow())
        return Answer::trialFailure;
    if (lengthInBytes < 1 || bytes[0] != 0)
        return Answer::badText;
    const std::uint8_t* const end = bytes + lengthInBytes;
    for (const std::uint8_t* at = bytes + 1; at != end;) {
        std::vector<std::string> fields(*at++);
        for (std::string& field : fields) {
            if (!takeField(at, end, field))
                return Answer::badText;
        }
        auto definition = definitionFrom(fields);
        if (!definition)
            return Answer::badText;
        definitions.push_back(std::move(*definition));
    }
    return Answer::ok;
}

} // namespace Survey
