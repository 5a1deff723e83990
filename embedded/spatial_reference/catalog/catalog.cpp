#include "embedded/spatial_reference/catalog/catalog.h"

#include <algorithm>

#include "embedded/base/text.h"
#include "embedded/spatial_reference/catalog/catalog_database.h"
#include "embedded/spatial_reference/catalog/catalog_list.h"
#include "embedded/spatial_reference/catalog/catalog_loader.h"
#include "embedded/spatial_reference/catalog/catalog_operations.h"
#include "embedded/spatial_reference/catalog/local_systems.h"
#include "embedded/spatial_reference/projjson/proj_object.h"

namespace Embedded {
namespace {

using namespace Zentara::Infrastructure::SpatialReference;

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

std::optional<std::string> versionOf(const std::string& authority)
{
    const char* version = proj_context_get_database_metadata(projContext(), (authority + ".VERSION").c_str());
    return version != nullptr ? std::optional<std::string>(version) : std::nullopt;
}

} // namespace

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
        return localEntry(loaded->projjson());
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
    return "EPSG " + versionOf("EPSG").value_or("unavailable");
}

std::vector<AuthorityVersion> catalogVersions()
{
    std::vector<AuthorityVersion> versions;
    for (const std::string& authority : catalogAuthorities())
        versions.push_back({authority, versionOf(authority.c_str())});
    std::stable_partition(versions.begin(), versions.end(),
                          [](const AuthorityVersion& entry) { return entry.version.has_value(); });
    return versions;
}

} // namespace Embedded
