#include "embedded/spatial_reference/streams/definition_text.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <utility>

#include "embedded/base/memo_cache.h"
#include "embedded/base/text.h"
#include "embedded/spatial_reference/projjson/strict_json.h"
#include "embedded/spatial_reference/projjson/projjson_validation.h"

namespace Embedded {
namespace {

using namespace Zentara::Infrastructure::SpatialReference;

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
    return {{"type", nameOfType(definition.type)}, {"code", definition.codeUtf8}, {"definition", definition.document}};
}

std::optional<DefinitionData> definitionFrom(const Projjson& entry)
{
    const auto type = typeOfName(textOf(entry, "type"));
    const auto code = textOf(entry, "code");
    const Projjson* document = memberOf(entry, "definition");
    if (!type || code.empty() || !document || !isValidDocument(*type, *document))
        return std::nullopt;
    return DefinitionData(*type, std::string(code), *document);
}

TextReading definitionsFrom(const Projjson& entries)
{
    TextReading reading{statusOk, {}};
    for (const Projjson& entry : entries) {
        auto definition = definitionFrom(entry);
        if (!definition)
            return {statusUnreadable, {}};
        reading.definitions.push_back(*std::move(definition));
    }
    return reading;
}

TextReading readFrame(const Projjson& frame)
{
    const Projjson* version = memberOf(frame, kVersionKey);
    if (!version || !version->is_number_unsigned() || *version == 0)
        return {statusUnreadable, {}};
    if (*version > kTextFrameVersion)
        return {statusUnsupported, {}};
    const Projjson* entries = memberOf(frame, kDefinitionsKey);
    if (!entries || !entries->is_array() || entries->empty())
        return {statusUnreadable, {}};
    return definitionsFrom(*entries);
}

/// Without the terminating NUL; nothing when that is missing, comes early, or the bytes are no whole units.
std::optional<std::wstring> wideTextFrom(std::string_view utf16le)
{
    std::wstring text = wideFromUtf16le(utf16le);
    if (utf16le.size() % 2 != 0 || text.find(L'\0') != text.size() - 1)
        return std::nullopt;
    text.pop_back();
    return text;
}

TextReading readUtf16le(std::string_view utf16le)
{
    if (utf16le.empty())
        return {statusEmptyText, {}};
    const auto text = wideTextFrom(utf16le);
    if (!text)
        return {statusUnreadable, {}};
    if (text->empty())
        return {statusEmptyText, {}};
    const auto frame = isWellFormed(*text) ? readJson(utf8FromWide(*text)) : std::nullopt;
    return frame ? readFrame(*frame) : TextReading{statusUnreadable, {}};
}

} // namespace

std::string textFrameFrom(const DefinitionData& definition, bool includeDependents)
{
    Projjson entries = Projjson::array({entryOf(definition)});
    if (includeDependents) {
        if (const auto datum = datumDataOf(definition))
            entries.push_back(entryOf(*datum));
        if (const auto ellipsoid = ellipsoidDataOf(definition))
            entries.push_back(entryOf(*ellipsoid));
    }
    const Projjson frame{{kVersionKey, kTextFrameVersion}, {kDefinitionsKey, std::move(entries)}};
    return utf16leFromWide(wideFromUtf8(frame.dump()) + L'\0');
}

TextReading definitionsFromTextFrame(std::string_view utf16le)
{
    static MemoCache<std::string, TextReading> readings;
    return readings.getOrCompute(
        utf16le, [utf16le] { return readUtf16le(utf16le); },
        [](const TextReading& reading) { return reading.status == statusOk; });
}

} // namespace Embedded
