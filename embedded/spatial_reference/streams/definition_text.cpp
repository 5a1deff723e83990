#include "embedded/spatial_reference/streams/definition_text.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <utility>

#include "embedded/base/json/strict_json.h"
#include "embedded/base/memo_cache.h"
#include "embedded/base/text.h"
#include "embedded/spatial_reference/projjson/projjson_validation.h"

namespace Embedded {
namespace {

using namespace Zentara::Infrastructure::SpatialReference;

using Definitions = std::vector<DefinitionData>;

constexpr const char* kVersionKey = "spatialReference";
constexpr const char* kDefinitionsKey = "definitions";

constexpr std::array<std::pair<DefinitionType, std::string_view>, 3> kTypeNames{{
    {DefinitionType::coordinateReferenceSystem, "CoordinateReferenceSystemDefinition"},
    {DefinitionType::datum, "DatumDefinition"},
    {DefinitionType::ellipsoid, "EllipsoidDefinition"},
}};

std::string_view nameOfType(DefinitionType type)
{
    return std::ranges::find(kTypeNames, type, &decltype(kTypeNames)::value_type::first)->second;
}

std::optional<DefinitionType> typeOfName(std::string_view name)
{
    const auto found = std::ranges::find(kTypeNames, name, &decltype(kTypeNames)::value_type::second);
    return found == kTypeNames.end() ? std::nullopt : std::optional(found->first);
}

Projjson entryOf(const DefinitionData& definition)
{
    return {
        {"type", nameOfType(definition.type)}, {"code", definition.codeUtf8}, {"definition", definition.projjson()}};
}

tl::unexpected<Error> unreadable(const char* reason)
{
    return failure(statusUnreadable, reason);
}

/// Returns whether the PROJJSON is the datum or the ellipsoid of an earlier definition, of which PROJ has made an
/// object.
bool isPartOf(const Definitions& definitions, DefinitionType type, const Projjson& projjson)
{
    return std::ranges::any_of(definitions, [&](const DefinitionData& definition) {
        const auto part = type == DefinitionType::datum ? datumData(definition) : ellipsoidData(definition);
        return part && part->type == type && part->projjson() == projjson;
    });
}

bool isValid(const Definitions& before, DefinitionType type, const Projjson& projjson)
{
    return isPartOf(before, type, projjson) ? hasRequiredParts(type, projjson) : isValidProjjson(type, projjson);
}

/// Moves the PROJJSON out of the entry.
Expected<DefinitionData> readEntry(const Definitions& before, Projjson& entry)
{
    const auto type = typeOfName(textOf(entry, "type"));
    const auto code = textOf(entry, "code");
    const auto projjson = entry.is_object() ? entry.find("definition") : entry.end();
    if (!type || code.empty() || projjson == entry.end() || !isValid(before, *type, *projjson))
        return unreadable("a definition lacks a part that its type must have");
    return DefinitionData(*type, std::string(code), std::move(*projjson));
}

Expected<Definitions> readFrame(Projjson frame)
{
    const Projjson* version = memberOf(frame, kVersionKey);
    if (!version || !version->is_number_unsigned() || *version == 0)
        return unreadable("the text has no version");
    if (*version > kDefinitionTextVersion)
        return failure(statusUnsupported, "the text has a newer version than 1");
    const Projjson* entries = memberOf(frame, kDefinitionsKey);
    if (!entries || !entries->is_array() || entries->empty())
        return unreadable("the text has no definitions");
    Definitions definitions;
    for (Projjson& entry : frame[kDefinitionsKey]) {
        auto definition = readEntry(definitions, entry);
        if (!definition)
            return failure(std::move(definition).error());
        definitions.push_back(*std::move(definition));
    }
    return definitions;
}

/// The text without its terminating NUL.
Expected<std::wstring> decodeUtf16le(std::string_view utf16le)
{
    std::wstring text = wideFromUtf16le(utf16le);
    if (utf16le.size() % 2 != 0 || text.find(L'\0') != text.size() - 1)
        return unreadable("the bytes are not UTF-16 with one NUL, at the end");
    text.pop_back();
    return text;
}

Expected<Definitions> readText(std::string_view utf16le)
{
    if (utf16le.empty())
        return failure(statusEmptyText, "the text is empty");
    const auto text = decodeUtf16le(utf16le);
    if (!text)
        return failure(text.error());
    if (text->empty())
        return failure(statusEmptyText, "the text is empty");
    if (!isWellFormed(*text))
        return unreadable("the text has an unpaired surrogate");
    auto frame = parseStrictJson(utf8FromWide(*text), kDeepestJson);
    if (!frame)
        return failure(statusUnreadable, frame.error().text());
    return readFrame(*std::move(frame));
}

} // namespace

std::string encodeDefinitionText(const DefinitionData& definition, bool includeDependents)
{
    Projjson entries = Projjson::array({entryOf(definition)});
    if (includeDependents) {
        if (const auto datum = datumData(definition))
            entries.push_back(entryOf(*datum));
        if (const auto ellipsoid = ellipsoidData(definition))
            entries.push_back(entryOf(*ellipsoid));
    }
    const Projjson frame{{kVersionKey, kDefinitionTextVersion}, {kDefinitionsKey, std::move(entries)}};
    return utf16leFromWide(wideFromUtf8(frame.dump()) + L'\0');
}

Expected<std::vector<DefinitionData>> decodeDefinitionText(std::string_view utf16le)
{
    static MemoCache<std::string, Expected<Definitions>> texts;
    return texts.getOrCompute(
        utf16le, [utf16le] { return readText(utf16le); },
        [](const Expected<Definitions>& read) { return read.has_value(); });
}

} // namespace Embedded
