#include "orvelcs/drawing/config_check.h"

#include <algorithm>
#include <utility>

#include <fmt/format.h>

#include "embedded/base/text.h"
#include "embedded/spatial_reference/catalog/code_notations.h"
#include "embedded/spatial_reference/catalog/operation_names.h"
#include "embedded/spatial_reference/operations/coordinate_transformer.h"
#include "orvelcs/cli/display_text.h"
#include "orvelcs/cli/failure.h"
#include "orvelcs/cli/suggestion.h"
#include "orvelcs/drawing/catalog_lookup.h"
#include "orvelcs/drawing/config_text.h"

namespace Orvelcs {

namespace Library = Zentara::Infrastructure::SpatialReference;

namespace {

constexpr const char* kWayOut = "; --force stores it all the same";

Failure refusal(const std::wstring& subject, const std::string& message)
{
    return Failure(Embedded::utf8FromWide(subject), message + kWayOut);
}

std::wstring checkedCode(const std::wstring& given)
{
    const std::wstring code = Embedded::plainCode(given);
    const auto entry = Embedded::findCatalogEntry(code);
    if (entry)
        return entry->code;
    if (catalogLacks(code))
        throw refusal(code, "the catalog has no such code" + nearestCodesClause(code));
    throw refusal(code, Embedded::unreadableCatalogMessage(entry.error()));
}

std::vector<std::wstring> spellings(const std::wstring& name, Library::TransformationKind kind)
{
    const auto found = Embedded::operationSpellings(name, kind);
    if (!found)
        throw refusal(name, Embedded::unreadableCatalogMessage(found.error()));
    return *found;
}

Failure noSuchOperation(const std::wstring& name, Library::TransformationKind kind)
{
    const auto other =
        kind == Library::transformationPath ? Library::transformationSingle : Library::transformationPath;
    if (!spellings(name, other).empty())
        return refusal(name, fmt::format("is a {0} and not a {1}; give --type {0}", transformationKindName(other),
                                         transformationKindName(kind)));
    return refusal(name, fmt::format("the catalog has no such {}{}", transformationKindName(kind),
                                     nearestOperationsClause(name, kind)));
}

/// The name as the catalog spells it, or a code.
std::wstring checkedName(const std::wstring& name, Library::TransformationKind kind)
{
    const std::vector<std::wstring> found = spellings(name, kind);
    if (found.empty())
        throw noSuchOperation(name, kind);
    return std::ranges::find(found, name) != found.end() ? name : found.front();
}

bool isComplete(const ConfigItem& item)
{
    return !item.source.empty() && !item.target.empty() && !item.name.empty();
}

std::string describeMisfit(const Embedded::Error& error, const ConfigItem& item)
{
    switch (Embedded::operationErrorOf(error)) {
    case Embedded::OperationError::ambiguousOperation:
        return error.message + "; give the code of one";
    case Embedded::OperationError::doesNotFit:
    case Embedded::OperationError::notReversible:
        return fmt::format("{}; orvelcs transformation list {} {} shows what does", error.message, oneLine(item.source),
                           oneLine(item.target));
    default:
        return error.message;
    }
}

} // namespace

ConfigItem checkedItem(const ConfigItem& item)
{
    ConfigItem checked = item;
    const auto kind = static_cast<Library::TransformationKind>(item.type);
    checked.source = checkedCode(item.source);
    checked.target = checkedCode(item.target);
    if (checked.source == checked.target)
        throw refusal(checked.source, "is both the source and the target, between which nothing is looked up");
    checked.name = checkedName(item.name, kind);
    const auto fits = Embedded::checkConfiguredOperation(checked.source, checked.target, {checked.name, kind});
    if (!fits)
        throw Failure(fits.error().place, describeMisfit(fits.error(), checked) + kWayOut);
    return checked;
}

ConfigItemText checkedItem(const ConfigItemText& item)
{
    ConfigItem wide;
    wide.source = Embedded::wideFromUtf8(item.source);
    wide.target = Embedded::wideFromUtf8(item.target);
    wide.name = Embedded::wideFromUtf8(item.name);
    wide.type = item.type;
    wide = checkedItem(wide);
    return {.source = Embedded::utf8FromWide(wide.source),
            .target = Embedded::utf8FromWide(wide.target),
            .name = Embedded::utf8FromWide(wide.name),
            .note = item.note,
            .type = item.type};
}

void checkPairIsNew(const std::vector<ConfigItem>& items, const ConfigItem& item)
{
    const auto same =
        std::ranges::find_if(items, [&](const ConfigItem& other) { return isPair(other, item.source, item.target); });
    if (same != items.end())
        throw refusal(
            item.source + L" to " + item.target,
            fmt::format("has an item already, {}, and a second one would never be used; remove that one first",
                        oneLine(same->name)));
}

std::wstring checkedText(const std::wstring& text)
{
    std::wstring checkedText = text;
    std::vector<ConfigItem> earlier;
    std::vector<PlacedItem> placed = placedItems(text);
    for (const PlacedItem& place : placed) {
        if (!isComplete(place.item))
            continue;
        checkPairIsNew(earlier, place.item);
        earlier.push_back(place.item);
    }
    std::ranges::reverse(placed); // what is replaced moves only what follows it
    for (const PlacedItem& place : placed) {
        if (!isComplete(place.item))
            continue;
        const ConfigItem checked = checkedItem(place.item);
        checkedText.replace(place.begin, place.length,
                            withFields(text.substr(place.begin, place.length), place.item, checked));
    }
    return checkedText;
}

} // namespace Orvelcs
