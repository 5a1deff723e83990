#include "orvelcs/drawing/config_item.h"

#include <fmt/format.h>

#include "coordsys/orvel_transformation_config.h"
#include "embedded/spatial_reference/catalog/catalog.h"
#include "orvelcs/cli/command.h"
#include "orvelcs/cli/display_text.h"
#include "orvelcs/cli/failure.h"
#include "orvelcs/drawing/transformation_kind.h"
#include "orvelcs/output/result_names.h"
#include "storage/library_holder.h"
#include "transformation/item_chunks.h"

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
Library::Status statusOf(const std::wstring& name)
{
    Orvel::LibraryObject<Definition> definition;
    return Definition::Load(name.c_str(), definition.put());
}

std::string candidatesClause(const std::vector<Embedded::OperationCandidate>& candidates)
{
    std::string clause;
    for (const Embedded::OperationCandidate& candidate : candidates)
        clause += (clause.empty() ? "" : ", ") + Embedded::utf8FromWide(candidate.code);
    return clause;
}

std::size_t endOfLastItem(std::wstring_view text)
{
    std::wstring_view remaining = text;
    while (Orvel::TakeItemChunk(remaining)) {
    }
    return text.size() - remaining.size();
}

} // namespace

std::vector<ConfigItem> itemsOf(const std::wstring& text)
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

std::wstring elementOf(const ConfigItemText& item)
{
    const auto made = newInstance<Item>();
    made->SetSourceCs(wideArgument("--source", item.source).c_str());
    made->SetTargetCs(wideArgument("--target", item.target).c_str());
    made->SetName(wideArgument("--name", item.name).c_str());
    made->SetNote(item.note.empty() ? L"" : wideArgument("--note", item.note).c_str());
    made->SetType(item.type);
    std::wstring element = made->ToXmlString();
    // Nothing is escaped in a configuration, so a value may hold what looks like a tag, but not one that cuts it.
    const std::vector<ConfigItem> readBack = itemsOf(element);
    if (readBack.size() != 1 || readBack.front().xml != element)
        throw wrongUsage("--name", "or another value holds a tag that a configuration cannot hold");
    return element;
}

Library::Status statusOfOperation(const std::wstring& name, int kind)
{
    return kind == Library::transformationPath ? statusOf<Library::GeodeticPathDefinition>(name)
                                               : statusOf<Library::GeodeticTransformationDefinition>(name);
}

bool isCatalogAnswer(Library::Status status)
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
    const Library::Status status = statusOfOperation(name, item.type);
    if (status == Library::statusAmbiguous)
        output.note(item.name, fmt::format("several have this name: {}; a code says which is meant",
                                           candidatesClause(isPath ? Embedded::pathCandidates(name)
                                                                   : Embedded::transformationCandidates(name))));
    else if (!isCatalogAnswer(status))
        output.note(item.name, describeCatalogFailure(status));
    else if (status != Library::statusOk)
        output.note(item.name, fmt::format("the catalog has no {} of this name", transformationKindName(item.type)));
}

std::wstring withElement(const std::wstring& text, const std::wstring& element)
{
    std::wstring longer = text;
    return longer.insert(endOfLastItem(text), element);
}

std::wstring tailOf(const std::wstring& text)
{
    return text.substr(endOfLastItem(text));
}

} // namespace Orvelcs
