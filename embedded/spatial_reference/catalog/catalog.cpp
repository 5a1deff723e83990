#include "embedded/spatial_reference/catalog/catalog.h"

#include <algorithm>
#include <memory>
#include <tuple>
#include <unordered_set>

#include "embedded/base/text.h"
#include "embedded/spatial_reference/catalog/catalog_loader.h"
#include "embedded/spatial_reference/catalog/catalog_operations.h"
#include "embedded/spatial_reference/catalog/local_systems.h"
#include "platform/spatial_reference/definition.h"

namespace Embedded {
namespace {

using namespace Zentara::Infrastructure::SpatialReference;

struct InfoListRelease {
    void operator()(PROJ_CRS_INFO** list) const { proj_crs_info_list_destroy(list); }
};

/// The kind of a single system's PROJ type; 0 for what this library does not have.
int kindOfType(PJ_TYPE type)
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
        return 0;
    }
}

/// The list does not say what a compound system is made of.
int kindOfCompound(const CatalogCode& code)
{
    const ProjObject compound = catalogObject(code, PJ_CATEGORY_CRS);
    const ProjObject horizontal(compound ? proj_crs_get_sub_crs(projContext(), compound.get(), 0) : nullptr);
    return horizontal ? kindOfType(proj_get_type(horizontal.get())) : 0;
}

std::wstring wideOrEmpty(const char* utf8)
{
    return utf8 ? wideFromUtf8(utf8) : std::wstring();
}

CatalogEntry entryOf(const PROJ_CRS_INFO& info)
{
    const CatalogCode code{info.auth_name, info.code};
    return {.code = wideFromUtf8(code.text()),
            .name = wideOrEmpty(info.name),
            .kind = info.type == PJ_TYPE_COMPOUND_CRS ? kindOfCompound(code) : kindOfType(info.type),
            .deprecated = info.deprecated != 0,
            .areaOfUse = wideOrEmpty(info.area_name)};
}

CatalogEntry localEntry(const Projjson& document)
{
    return {.code = wideFromUtf8(codeOf(document)),
            .name = wideFromUtf8(nameOf(document)),
            .kind = kindOf(document),
            .deprecated = false,
            .areaOfUse = L"Anywhere: a site's own plane"};
}

std::vector<CatalogEntry> readEntries()
{
    std::vector<CatalogEntry> entries;
    std::unordered_set<std::wstring> seen; // PROJ lists a system once for each of its areas
    int count = 0;
    const std::unique_ptr<PROJ_CRS_INFO*, InfoListRelease> list(
        proj_get_crs_info_list_from_database(projContext(), nullptr, nullptr, &count));
    for (int index = 0; index < count; ++index) {
        CatalogEntry entry = entryOf(*list.get()[index]);
        if (entry.kind != 0 && seen.insert(entry.code).second)
            entries.push_back(std::move(entry));
    }
    for (const Projjson& document : localSystems())
        entries.push_back(localEntry(document));
    return entries;
}

std::vector<OperationCandidate> candidates(std::wstring_view name, DefinitionType type)
{
    std::vector<OperationCandidate> found;
    for (const DefinitionData& operation : operationsNamed(utf8FromWide(name), type))
        found.push_back({operation.code, operation.name});
    return found;
}

std::optional<std::string> causeOf(const std::optional<CatalogFault>& fault)
{
    return fault ? std::optional(fault->cause) : std::nullopt;
}

CatalogEntry entryOfLoaded(const DefinitionData& data, const PJ* object)
{
    const char* area = nullptr;
    if (!proj_get_area_of_use(projContext(), object, nullptr, nullptr, nullptr, nullptr, &area))
        area = nullptr;
    return {.code = data.code,
            .name = data.name,
            .kind = data.kind,
            .deprecated = proj_is_deprecated(object) != 0,
            .areaOfUse = wideOrEmpty(area)};
}

} // namespace

const std::vector<CatalogEntry>& catalogEntries()
{
    static const std::vector<CatalogEntry> entries = readEntries();
    return entries;
}

std::optional<std::string> whyCatalogFails(std::wstring_view code)
{
    return causeOf(faultBehindMissing(utf8FromWide(code), DefinitionType::coordinateReferenceSystem));
}

std::optional<std::string> checkCatalog()
{
    return causeOf(faultOfWholeCatalog());
}

std::optional<std::string> whyCatalogIsUnlisted()
{
    if (isCatalogAvailable() && catalogEntries().size() > localSystems().size())
        return std::nullopt;
    return causeOf(faultOfLastAnswer()).value_or(catalogPath() + ": PROJ cannot list its systems");
}

std::string unreadableCatalogMessage(std::string_view cause)
{
    return std::string("the catalog cannot be read: ").append(cause);
}

std::string catalogPath()
{
    const char* path = proj_context_get_database_path(projContext());
    return path ? path : "";
}

std::optional<CatalogEntry> findCatalogEntry(std::wstring_view code)
{
    const auto loaded = loadFromCatalog(std::wstring(code).c_str(), DefinitionType::coordinateReferenceSystem);
    if (!loaded.data)
        return std::nullopt;
    const auto resolved = splitCode(loaded.data->codeUtf8);
    if (resolved->authority == kLocalAuthority)
        return localEntry(loaded.data->document);
    const ProjObject object = catalogObject(*resolved, PJ_CATEGORY_CRS);
    return object ? std::optional(entryOfLoaded(*loaded.data, object.get())) : std::nullopt;
}

std::vector<std::wstring> replacementsOf(std::wstring_view code)
{
    const auto resolved = resolveCode(utf8FromWide(code));
    const ProjObject object = resolved ? catalogObject(*resolved, PJ_CATEGORY_CRS) : nullptr;
    if (!object || !proj_is_deprecated(object.get()))
        return {};
    const ProjList list(proj_get_non_deprecated(projContext(), object.get()));
    std::vector<std::wstring> codes;
    const int count = list ? proj_list_get_count(list.get()) : 0;
    for (int index = 0; index < count; ++index) {
        const ProjObject replacement(proj_list_get(projContext(), list.get(), index));
        const char* authority = proj_get_id_auth_name(replacement.get(), 0);
        const char* number = proj_get_id_code(replacement.get(), 0);
        if (authority && number)
            codes.push_back(wideFromUtf8(CatalogCode{authority, number}.text()));
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
