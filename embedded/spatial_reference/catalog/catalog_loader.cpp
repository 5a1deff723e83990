#include "embedded/spatial_reference/catalog/catalog_loader.h"

#include <algorithm>
#include <utility>

#include "embedded/base/case_folding.h"
#include "embedded/base/memo_cache.h"
#include "embedded/base/text.h"
#include "embedded/spatial_reference/catalog/catalog_database.h"
#include "embedded/spatial_reference/catalog/local_systems.h"
#include "embedded/spatial_reference/projjson/canonical_projjson.h"

namespace Embedded {
namespace {

using namespace Zentara::Infrastructure::SpatialReference;

PJ_CATEGORY projCategory(DefinitionType type)
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

/// False for vertical systems and datums, which PROJ keeps in the same category.
bool isOfThisLibrary(const DefinitionData& data)
{
    switch (data.type) {
    case DefinitionType::coordinateReferenceSystem:
        return data.kind.has_value();
    case DefinitionType::datum:
        return data.ellipsoidNode() != nullptr;
    default:
        return true;
    }
}

/// Returns whether the code can be the catalog's own spelling. The database compares codes that look like numbers as
/// numbers, so it would find EPSG:4326 for " 4326" and "04326".
bool isSpelledOut(std::string_view code)
{
    constexpr std::string_view kDigits = "0123456789";
    if (code.find_first_not_of(kDigits) == std::string_view::npos)
        return code.size() == 1 || !code.starts_with('0');
    return code.find_first_not_of("0123456789+-.eE \t\r\n\v\f") != std::string_view::npos;
}

enum class GridNames { ofCatalog, ofInstalledFiles };

ProjObject readObject(const CatalogCode& code, PJ_CATEGORY category, GridNames gridNames)
{
    if (!isSpelledOut(code.code))
        return nullptr;
    return ProjObject(proj_create_from_database(projContext(), code.authority.c_str(), code.code.c_str(), category,
                                                gridNames == GridNames::ofInstalledFiles, nullptr));
}

/// Returns whether PROJ has an object of that code, which is not a definition of this library.
bool isForeignObject(const CatalogCode& code, DefinitionType type)
{
    const ProjObject object = catalogObject(code, projCategory(type));
    return object && !canonicalProjjson(object.get()).empty();
}

Expected<DefinitionData> loadLocalSystem(const CatalogCode& code, DefinitionType type)
{
    const Projjson* projjson = findLocalSystem(code.code);
    if (!projjson || type != DefinitionType::coordinateReferenceSystem)
        return failure(notInCatalog());
    return DefinitionData(type, code.text(), *projjson);
}

std::optional<DefinitionData> readFromDatabase(const CatalogCode& code, DefinitionType type)
{
    const ProjObject object = catalogObject(code, projCategory(type));
    if (!object)
        return std::nullopt;
    DefinitionData data(type, code.text(), canonicalProjjson(object.get()));
    return isOfThisLibrary(data) ? std::optional(std::move(data)) : std::nullopt;
}

std::optional<DefinitionData> cachedDefinition(const CatalogCode& code, DefinitionType type)
{
    using Definition = std::optional<DefinitionData>;
    static MemoCache<std::pair<DefinitionType, std::string>, Definition> definitions;
    return definitions.getOrCompute(
        std::pair(type, code.text()), [&] { return readFromDatabase(code, type); },
        [](const Definition& read) { return read.has_value(); });
}

/// The definition under the authority in capitals, as the catalog spells its own; nothing when PROJ has none there.
/// Asks for the one object, where the list of all authorities makes SQLite walk through every table (750 reads of the
/// file).
std::optional<DefinitionData> definitionInCapitals(CatalogCode code, DefinitionType type)
{
    code.authority = toUpperAscii(code.authority);
    return cachedDefinition(code, type);
}

} // namespace

std::optional<CatalogCode> resolveCode(std::string_view utf8)
{
    auto code = splitCode(utf8);
    if (!code)
        return std::nullopt;
    if (equalsIgnoringAsciiCase(code->authority, kLocalAuthority)) {
        code->authority = kLocalAuthority;
        return code;
    }
    if (std::string capitals = toUpperAscii(code->authority); hasAuthority(capitals)) {
        code->authority = std::move(capitals);
        return code;
    }
    const auto& authorities = catalogAuthorities();
    const auto found = std::ranges::find_if(
        authorities, [&](const std::string& authority) { return equalsIgnoringAsciiCase(authority, code->authority); });
    if (found == authorities.end())
        return std::nullopt;
    code->authority = *found;
    return code;
}

ProjObject catalogObject(const CatalogCode& code, PJ_CATEGORY category)
{
    return readObject(code, category, GridNames::ofCatalog);
}

ProjObject operationWithInstalledGrids(const CatalogCode& code)
{
    return readObject(code, PJ_CATEGORY_COORDINATE_OPERATION, GridNames::ofInstalledFiles);
}

Expected<DefinitionData> loadFromCatalog(const wchar_t* text, DefinitionType type)
{
    const std::string utf8 = text ? utf8FromWide(text) : std::string();
    if (const auto given = splitCode(utf8); given && !equalsIgnoringAsciiCase(given->authority, kLocalAuthority)) {
        if (auto data = definitionInCapitals(*given, type))
            return *std::move(data);
    }
    const auto code = resolveCode(utf8);
    if (code && code->authority == kLocalAuthority)
        return loadLocalSystem(*code, type);
    if (auto data = code ? cachedDefinition(*code, type) : std::nullopt)
        return *std::move(data);
    return failure(explainMissingDefinition(utf8, type));
}

Error explainMissingDefinition(std::string_view utf8, DefinitionType type)
{
    const auto code = resolveCode(utf8);
    if (!code)
        return explainMissingAuthority();
    if (code->authority == kLocalAuthority)
        return notInCatalog();
    if (isSpelledOut(code->code) && !isForeignObject(*code, type))
        return explainMissingCode(*code, type);
    const auto open = checkCatalogIsOpen();
    return open ? notInCatalog() : open.error();
}

} // namespace Embedded
