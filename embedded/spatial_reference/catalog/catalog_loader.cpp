#include "embedded/spatial_reference/catalog/catalog_loader.h"

#include <algorithm>
#include <utility>

#include "embedded/base/memo_cache.h"
#include "embedded/base/text.h"
#include "embedded/spatial_reference/projjson/canonical_projjson.h"
#include "embedded/spatial_reference/catalog/local_systems.h"

namespace Embedded {
namespace {

using namespace Zentara::Infrastructure::SpatialReference;

PJ_CATEGORY categoryOf(DefinitionType type)
{
    switch (type) {
    case DefinitionType::datum:
        return PJ_CATEGORY_DATUM;
    case DefinitionType::ellipsoid:
        return PJ_CATEGORY_ELLIPSOID;
    default:
        return PJ_CATEGORY_CRS;
    }
}

/// Vertical systems and datums share their category with the ones of this library.
bool isOfThisLibrary(const DefinitionData& data)
{
    switch (data.type) {
    case DefinitionType::coordinateReferenceSystem:
        return data.kind != 0;
    case DefinitionType::datum:
        return data.ellipsoidNode() != nullptr;
    default:
        return true;
    }
}

/// The database compares codes as numbers where they look like one, so that " 4326" and "04326" would find EPSG:4326
/// and then go by a spelling that the catalog does not have.
bool isSpelledOut(std::string_view code)
{
    constexpr std::string_view kDigits = "0123456789";
    if (code.find_first_not_of(kDigits) == std::string_view::npos)
        return code.size() == 1 || !code.starts_with('0');
    return code.find_first_not_of("0123456789+-.eE \t\r\n\v\f") != std::string_view::npos;
}

ProjObject objectOfDatabase(const CatalogCode& code, PJ_CATEGORY category, bool usesProjGridNames)
{
    if (!isSpelledOut(code.code))
        return nullptr;
    return ProjObject(proj_create_from_database(projContext(), code.authority.c_str(), code.code.c_str(), category,
                                                usesProjGridNames ? 1 : 0, nullptr));
}

/// PROJ has an object of that code, but none of this library.
bool isOfAnotherLibrary(const CatalogCode& code, DefinitionType type)
{
    const ProjObject object = catalogObject(code, categoryOf(type));
    return object && !canonicalProjjson(object.get()).empty();
}

Loaded loadLocal(const CatalogCode& code, DefinitionType type)
{
    const Projjson* document = findLocalSystem(code.code);
    if (!document || type != DefinitionType::coordinateReferenceSystem)
        return {statusNotFound, std::nullopt};
    return {statusOk, DefinitionData(type, code.text(), *document)};
}

std::optional<DefinitionData> readFromDatabase(const CatalogCode& code, DefinitionType type)
{
    const ProjObject object = catalogObject(code, categoryOf(type));
    if (!object)
        return std::nullopt;
    DefinitionData data(type, code.text(), canonicalProjjson(object.get()));
    return isOfThisLibrary(data) ? std::optional(std::move(data)) : std::nullopt;
}

std::optional<DefinitionData> rememberedDefinition(const CatalogCode& code, DefinitionType type)
{
    using Definition = std::optional<DefinitionData>;
    static MemoCache<std::pair<DefinitionType, std::string>, Definition> definitions;
    return definitions.getOrCompute(
        std::pair(type, code.text()), [&] { return readFromDatabase(code, type); },
        [](const Definition& read) { return read.has_value(); });
}

} // namespace

std::optional<CatalogCode> resolveCode(std::string_view utf8)
{
    auto code = splitCode(utf8);
    if (!code)
        return std::nullopt;
    if (equalIgnoringCase(code->authority, kLocalAuthority)) {
        code->authority = kLocalAuthority;
        return code;
    }
    const auto& authorities = catalogAuthorities();
    const auto found = std::ranges::find_if(
        authorities, [&](const std::string& authority) { return equalIgnoringCase(authority, code->authority); });
    if (found == authorities.end())
        return std::nullopt;
    code->authority = *found;
    return code;
}

ProjObject catalogObject(const CatalogCode& code, PJ_CATEGORY category)
{
    return objectOfDatabase(code, category, /* usesProjGridNames */ false);
}

ProjObject operationWithInstalledGrids(const CatalogCode& code)
{
    return objectOfDatabase(code, PJ_CATEGORY_COORDINATE_OPERATION, /* usesProjGridNames */ true);
}

Loaded loadFromCatalog(const wchar_t* text, DefinitionType type)
{
    const std::string utf8 = text ? utf8FromWide(text) : std::string();
    const auto code = resolveCode(utf8);
    if (code && code->authority == kLocalAuthority)
        return loadLocal(*code, type);
    std::optional<DefinitionData> data = code ? rememberedDefinition(*code, type) : std::nullopt;
    return data ? Loaded{statusOk, std::move(data)}
                : Loaded{statusOfMissing(faultBehindMissing(utf8, type)), std::nullopt};
}

std::optional<CatalogFault> faultBehindMissing(std::string_view utf8, DefinitionType type)
{
    const auto code = resolveCode(utf8);
    if (!code)
        return faultBehindMissingAuthority();
    if (code->authority == kLocalAuthority)
        return std::nullopt;
    if (!isSpelledOut(code->code) || isOfAnotherLibrary(*code, type))
        return faultOfOpening();
    return faultBehindMissingCode(*code, type);
}

} // namespace Embedded
