#include "embedded/spatial_reference/proj_context.h"

#include <sstream>

#include "embedded/spatial_reference/shipped_catalog.h"

namespace Embedded {
namespace {

void ignore(void* /*data*/, int /*level*/, const char* /*message*/)
{
}

/// PROJ looks into the folder of the shipped catalog first, and then where it would have looked without one: its
/// database must fit the library, whatever other programs have set for theirs, and the grids that the user has may lie
/// anywhere.
void useShippedCatalog(PJ_CONTEXT* context)
{
    std::vector<std::string> folders{shippedCatalogFolder()};
    if (folders.front().empty())
        return;
    std::istringstream others(proj_info().searchpath);
    for (std::string folder; std::getline(others, folder, ';');) // as PROJ separates them where catalogs are shipped
        folders.push_back(folder);
    std::vector<const char*> paths;
    for (const std::string& folder : folders)
        paths.push_back(folder.c_str());
    proj_context_set_search_paths(context, static_cast<int>(paths.size()), paths.data());
}

/// Some of PROJ's messages pass over the level, so that what takes them has to be silent too.
PJ_CONTEXT* silentContext()
{
    PJ_CONTEXT* context = proj_context_create();
    proj_log_level(context, PJ_LOG_NONE);
    proj_log_func(context, nullptr, ignore);
    proj_context_set_enable_network(context, 0);
    useShippedCatalog(context);
    return context;
}

std::vector<std::string> readAuthorities()
{
    std::vector<std::string> authorities;
    PROJ_STRING_LIST list = proj_get_authorities_from_database(projContext());
    for (auto entry = list; entry && *entry; ++entry)
        authorities.emplace_back(*entry);
    proj_string_list_destroy(list);
    return authorities;
}

} // namespace

PJ_CONTEXT* projContext()
{
    static const std::unique_ptr<PJ_CONTEXT, ProjRelease> context(silentContext());
    return context.get();
}

bool isCatalogAvailable()
{
    return proj_context_get_database_path(projContext()) != nullptr;
}

const std::vector<std::string>& catalogAuthorities()
{
    static const std::vector<std::string> authorities = readAuthorities();
    return authorities;
}

} // namespace Embedded
