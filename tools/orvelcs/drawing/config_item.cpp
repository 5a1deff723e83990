#include "orvelcs/drawing/config_item.h"
#include "orvelcs/drawing/holders.h"

#include <fmt/format.h>

#include "coordsys/orvel_transformation_config.h"
#include "embedded/spatial_reference/catalog/catalog.h"
#include "orvelcs/cli/command.h"
#include "orvelcs/cli/display_text.h"
#include "orvelcs/cli/failure.h"
#include "orvelcs/output/result_names.h"

namespace Orvelcs {

namespace CoordinateSystem = Zentara::Gis::Orvel::CoordinateSystem;
namespace Library = Zentara::Infrastructure::SpatialReference;

namespace {

using Item = CoordinateSystem::OrvelTransformationConfigItem;
using ItemCollection = CoordinateSystem::OrvelTransformationConfigItemCollection;

template <class T>
Ptr<T> newInstance()
{
    Ptr<T> object(T::CreateInstance());
    if (!object)
        throw std::bad_alloc();
    return object;
}

ConfigItem readItem(Item& item)
{
    return {.source = item.GetSourceCs(),
            .target = item.GetTargetCs(),
            .name = item.GetName(),
            .note = item.GetNote(),
            .version = item.GetVersion(),
            .type = item.GetType(),
            .xml = item.ToXmlString()};
}

/// The status of loading what the item names.
template <class Definition>
Library::Status loadingStatus(const std::wstring& name)
{
    LibraryObject<Definition> definition;
    return Definition::Load(name.c_str(), definition.put());
}

std::string candidatesClause(const std::vector<Embedded::OperationCandidate>& candidates)
{
    std::string clause;
    for (const Embedded::OperationCandidate& candidate : candidates)
        clause += (clause.empty() ? "" : ", ") + Embedded::utf8FromWide(candidate.code);
    return clause;
}

} // namespace

std::string transformationKindName(int kind)
{
    switch (kind) {
    case Library::transformationPath:
        return "path";
    case Library::transformationSingle:
        return "transformation";
    default:
        return "neither path nor transformation";
    }
}

std::vector<ConfigItem> parseItems(const std::wstring& text)
{
    const auto collection = newInstance<ItemCollection>();
    collection->FromXmlString(text.c_str());
    std::vector<ConfigItem> items;
    for (int index = 0; index < collection->GetCount(); ++index) {
        const Ptr<FqDisposable> entry(collection->GetItem(index));
        if (auto* const item = dynamic_cast<Item*>(entry.get()))
            items.push_back(readItem(*item));
    }
    return items;
}

Json asJson(const ConfigItem& item)
{
    return {{"sourceCs", jsonText(item.source)}, {"targetCs", jsonText(item.target)},
            {"name", jsonText(item.name)},       {"type", item.type},
            {"note", jsonText(item.note)},       {"version", jsonText(item.version)},
            {"xml", jsonText(item.xml)}};
}

std::string asLine(const ConfigItem& item)
{
    if (item.xml.empty())
        return fmt::format("incomplete: {} to {}: {}", oneLine(item.source), oneLine(item.target), oneLine(item.name));
    return fmt::format("{} to {}: {} ({}){}{}", oneLine(item.source), oneLine(item.target), oneLine(item.name),
                       transformationKindName(item.type), item.note.empty() ? "" : ", ", oneLine(item.note));
}

std::wstring makeElement(const ConfigItemText& item)
{
    const auto made = newInstance<Item>();
    made->SetSourceCs(wideArgument("--source", item.source).c_str());
    made->SetTargetCs(wideArgument("--target", item.target).c_str());
    made->SetName(wideArgument("--name", item.name).c_str());
    made->SetNote(item.note.empty() ? L"" : wideArgument("--note", item.note).c_str());
    made->SetType(item.type);
    std::wstring element = made->ToXmlString();
    // Nothing is escaped in a configuration, so a value may hold what looks like a tag, but not one that cuts it.
    const std::vector<ConfigItem> readBack = parseItems(element);
    if (readBack.size() != 1 || readBack.front().xml != element)
        throw wrongUsage("--name", "or another value holds a tag that a configuration cannot hold");
    return element;
}

Library::Status operationStatus(const std::wstring& name, int kind)
{
    return kind == Library::transformationPath ? loadingStatus<Library::GeodeticPathDefinition>(name)
                                               : loadingStatus<Library::GeodeticTransformationDefinition>(name);
}

bool catalogWasRead(Library::Status status)
{
    return status == Library::statusOk || status == Library::statusNotFound || status == Library::statusAmbiguous;
}

std::string describeCatalogFailure(Library::Status status)
{
    const auto check = Embedded::checkCatalog();
    return (check ? "PROJ cannot read it from the catalog" : Embedded::unreadableCatalogMessage(check.error())) + ": " +
           statusName(status);
}

void noteDoubtfulName(const ConfigItemText& item, Output& output)
{
    const std::wstring name = Embedded::wideFromUtf8(item.name);
    const bool isPath = item.type == Library::transformationPath;
    const Library::Status status = operationStatus(name, item.type);
    if (status == Library::statusAmbiguous)
        output.note(item.name, fmt::format("several have this name: {}; a code says which is meant",
                                           candidatesClause(isPath ? Embedded::pathCandidates(name)
                                                                   : Embedded::transformationCandidates(name))));
    else if (!catalogWasRead(status))
        output.note(item.name, describeCatalogFailure(status));
    else if (status != Library::statusOk)
        output.note(item.name, fmt::format("the catalog has no {} of this name", transformationKindName(item.type)));
}

std::wstring withElement(const std::wstring& text, const std::wstring& element)
{
    std::wstring longer = text;
    return longer.insert(endOfLastItem(text), element);
}

std::size_t endOfLastItem(std::wstring_view text)
{
    constexpr std::wstring_view kItemEnd = L"</Item>";
    const std::size_t last = text.rfind(kItemEnd);
    return last == std::wstring_view::npos ? 0 : last + kItemEnd.size();
}

} // namespace Orvelcs
