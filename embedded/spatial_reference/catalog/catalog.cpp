#include "embedded/spatial_reference/catalog/catalog.h"

#include <memory>
#include <optional>
#include <unordered_set>

#include "embedded/base/text.h"
#include "embedded/spatial_reference/catalog/catalog_database.h"
#include "embedded/spatial_reference/catalog/catalog_loader.h"
#include "embedded/spatial_reference/catalog/catalog_operations.h"
#include "embedded/spatial_reference/catalog/local_systems.h"
#include "embedded/spatial_reference/projjson/proj_object.h"

namespace Embedded {
namespace {

using namespace Zentara::Infrastructure::SpatialReference;

struct InfoListRelease {
    void operator()(PROJ_CRS_INFO** list) const { proj_crs_info_list_destroy(list); }
};

/// The kind of a single system; nothing for a system of no kind of this library.
std::optional<CoordinateReferenceSystemKind> kindOfType(PJ_TYPE type)
{
    switch (type) {
    case PJ_TYPE_GEOGRAPHIC_2D_CRS:
    case PJ_TYPE_GEOGRAPHIC_3D_CRS:
    case PJ_TYPE_GEODETIC_CRS:
        return kindGeographic;
    case PJ_TYPE_GEOCENTRIC_CRS:
        return kindGeocentric;
    case PJ_TYPE_PROJECTED_CRS:
        return kindProjected;
    case PJ_TYPE_ENGINEERING_CRS:
        return kindNotEarthReferenced;
    default:
        return std::nullopt;
    }
}

/// PROJ's list does not say what a compound system consists of.
std::optional<CoordinateReferenceSystemKind> kindOfCompound(const CatalogCode& code)
{
    const ProjObject compound = catalogObject(code, PJ_CATEGORY_CRS);
    const ProjObject horizontal(compound ? proj_crs_get_sub_crs(projContext(), compound.get(), 0) : nullptr);
    return horizontal ? kindOfType(proj_get_type(horizontal.get())) : std::nullopt;
}

std::wstring wideOrEmpty(const char* utf8)
{
    return utf8 ? wideFromUtf8(utf8) : std::wstring();
}

std::optional<CatalogEntry> listedEntry(const PROJ_CRS_INFO& info)
{
    const CatalogCode code{info.auth_name, info.code};
    const auto kind = info.type == PJ_TYPE_COMPOUND_CRS ? kindOfCompound(code) : kindOfType(info.type);
    if (!kind)
        return std::nullopt;
    return CatalogEntry{.code = wideFromUtf8(code.text()),
                        .name = wideOrEmpty(info.name),
                        .kind = *kind,
                        .deprecated = info.deprecated != 0,
                        .areaOfUse = wideOrEmpty(info.area_name)};
}

CatalogEntry localEntry(const Projjson& projjson)
{
    return {.code = wideFromUtf8(codeOf(projjson)),
            .name = wideFromUtf8(nameOf(projjson)),
            .kind = kindNotEarthReferenced,
            .deprecated = false,
            .areaOfUse = L"Anywhere: a site's own plane"};
}

struct CatalogList {
    std::vector<CatalogEntry> entries;
    Expected<void> check;
};

CatalogList readList()
{
    CatalogList list;
    const CatalogReadCheck check;
    std::unordered_set<std::wstring> seen; // PROJ lists a system once for each of its areas
    int count = 0;
    const std::unique_ptr<PROJ_CRS_INFO*, InfoListRelease> infos(
        proj_get_crs_info_list_from_database(projContext(), nullptr, nullptr, &count));
    for (int index = 0; index < count; ++index) {
        auto entry = listedEntry(*infos.get()[index]);
        if (entry && seen.insert(entry->code).second)
            list.entries.push_back(*std::move(entry));
    }
    if (list.entries.empty())
        list.check = check.finish().and_then([]() -> Expected<void> {
            return failure(statusCatalogUnavailable, "PROJ cannot list its systems", catalogPath());
        });
    for (const Projjson& projjson : localSystems())
        list.entries.push_back(localEntry(projjson));
    return list;
}

const CatalogList& catalogList()
{
    static const CatalogList list = readList();
    return list;
}

std::vector<OperationCandidate> candidates(std::wstring_view name, DefinitionType type)
{
    std::vector<OperationCandidate> list;
    for (const DefinitionData& operation : operationsNamed(utf8FromWide(name), type))
        list.push_back({operation.code, operation.name});
    return list;
}

CatalogEntry loadedEntry(const DefinitionData& data, const PJ* object)
{
    const auto area = areaOfUse(object);
    return {.code = data.code,
            .name = data.name,
            .kind = data.kind.value_or(kindNotEarthReferenced),
            .deprecated = proj_is_deprecated(object) != 0,
            .areaOfUse = area ? wideFromUtf8(area->name) : std::wstring()};
}

} // namespace

const std::vector<CatalogEntry>& catalogEntries()
{
    return catalogList().entries;
}

Expected<void> checkCatalogList()
{
    return catalogList().check;
}

Expected<void> checkCatalogFor(std::wstring_view code)
{
    Error error = explainMissingDefinition(utf8FromWide(code), DefinitionType::coordinateReferenceSystem);
    if (error.status == statusNotFound)
        return {};
    return failure(std::move(error));
}

Expected<void> checkCatalog()
{
    return checkWholeCatalog();
}

std::string unreadableCatalogMessage(const Error& error)
{
    return "the catalog cannot be read: " + error.text();
}

std::string catalogPath()
{
    const char* path = proj_context_get_database_path(projContext());
    return path ? path : "";
}

Expected<CatalogEntry> findCatalogEntry(std::wstring_view code)
{
    const auto loaded = loadFromCatalog(std::wstring(code).c_str(), DefinitionType::coordinateReferenceSystem);
    if (!loaded)
        return failure(loaded.error());
    const auto resolved = splitCode(loaded->codeUtf8);
    if (resolved->authority == kLocalAuthority)
        return localEntry(loaded->projjson);
    const ProjObject object = catalogObject(*resolved, PJ_CATEGORY_CRS);
    if (!object)
        return failure(explainMissingCode(*resolved, DefinitionType::coordinateReferenceSystem));
    return loadedEntry(*loaded, object.get());
}

std::vector<std::wstring> replacementCodes(std::wstring_view code)
{
    const auto resolved = resolveCode(utf8FromWide(code));
    const ProjObject object = resolved ? catalogObject(*resolved, PJ_CATEGORY_CRS) : nullptr;
    if (!object || !proj_is_deprecated(object.get()))
        return {};
    std::vector<std::wstring> codes;
    for (const ProjObject& replacement : objectsOf(ProjList(proj_get_non_deprecated(projContext(), object.get())))) {
        if (const std::string replacing = codeOfObject(replacement.get()); !replacing.empty())
            codes.push_back(wideFromUtf8(replacing));
    }
    return codes;
}

std::vector<OperationCandidate> transformationCandidates(std::wstring_view name)
{
    return candidates(name, DefinitionType::transformation);
}

std::vector<OperationCandidate> pathCandidates(std::wstring_view name)
{
    return candidates(name, DefinitionType::path);
}

std::string projVersion()
{
    return std::string("PROJ ") + proj_info().version;
}

std::string catalogVersion()
{
    const char* version = proj_context_get_database_metadata(projContext(), "EPSG.VERSION");
    return std::string("EPSG ") + (version ? version : "unavailable");
}

} // namespace Embedded
