#include "embedded/spatial_reference/projjson/proj_context.h"

#include <cstdlib>
#include <sstream>
#include <string_view>

#include "embedded/spatial_reference/projjson/shipped_catalog.h"

namespace Embedded {
namespace {

ReadFailure lastReadFailure = ReadFailure::none;
std::string lastMessage;

/// Watches PROJ's messages, which are the only sign of some failures. They are not printed.
void watchMessage(void* /*data*/, int /*level*/, const char* message)
{
    const std::string_view text = message ? message : "";
    const auto contains = [text](std::string_view part) { return text.find(part) != std::string_view::npos; };
    if (contains("bad_alloc") || contains("out of memory"))
        lastReadFailure = ReadFailure::memory;
    else if (contains("SQLite error") && lastReadFailure == ReadFailure::none)
        lastReadFailure = ReadFailure::database;
    else
        lastMessage = text;
}

/// Lets PROJ search the folder of the shipped catalog first: its database must fit the library, whatever other programs
/// have set for theirs. The folders that PROJ would search without it follow, since the user's grids may lie anywhere.
void useShippedCatalog(PJ_CONTEXT* context)
{
    if (shippedCatalogFolder().empty())
        return;
    const std::vector<std::string> folders = catalogFolders();
    std::vector<const char*> paths;
    for (const std::string& folder : folders)
        paths.push_back(folder.c_str());
    proj_context_set_search_paths(context, static_cast<int>(paths.size()), paths.data());
}

/// Allows grids from the network only if the environment says so. PROJ's own settings file does not speak for the user.
void chooseNetwork(PJ_CONTEXT* context)
{
    const char* choice = std::getenv("PROJ_NETWORK"); // PROJ reads it itself
    if (choice == nullptr || *choice == '\0')
        proj_context_set_enable_network(context, 0);
}

PJ_CONTEXT* silentContext()
{
    PJ_CONTEXT* context = proj_context_create();
    proj_log_level(context, PJ_LOG_ERROR);
    proj_log_func(context, nullptr, watchMessage);
    chooseNetwork(context);
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
    // It is never destroyed: the system takes the memory back at once, where freeing it piece by piece was 7 % of a
    // short command's time.
    static PJ_CONTEXT* const context = silentContext();
    return context;
}

std::vector<std::string> catalogFolders()
{
    const std::string shipped = shippedCatalogFolder();
    std::vector<std::string> folders;
    if (!shipped.empty())
        folders.push_back(shipped);
    std::istringstream others(proj_info().searchpath);
    for (std::string folder; std::getline(others, folder, searchPathSeparator());)
        folders.push_back(folder);
    return folders;
}

bool isCatalogAvailable()
{
    return proj_context_get_database_path(projContext()) != nullptr;
}

ReadFailure readFailure()
{
    return lastReadFailure;
}

void forgetReadFailure()
{
    lastReadFailure = ReadFailure::none;
}

std::string lastProjMessage()
{
    // "proj_create: Error 1027 (Invalid value for an argument): utm: Invalid value for zone"
    std::string_view text = lastMessage;
    if (const auto function = text.find(": "); text.starts_with("proj_") && function != std::string_view::npos)
        text.remove_prefix(function + 2);
    if (const auto number = text.find("): "); text.starts_with("Error ") && number != std::string_view::npos)
        text.remove_prefix(number + 3);
    return std::string(text);
}

void forgetProjMessage()
{
    lastMessage.clear();
}

const std::vector<std::string>& catalogAuthorities()
{
    static std::vector<std::string> authorities;
    if (authorities.empty()) // PROJ could not read them before
        authorities = readAuthorities();
    return authorities;
}

} // namespace Embedded
