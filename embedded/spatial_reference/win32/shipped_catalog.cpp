#include "embedded/spatial_reference/shipped_catalog.h"

#include <windows.h>

#include <filesystem>
#include <system_error>

#include "embedded/foundation/text.h"

namespace Embedded {
namespace {

std::filesystem::path ownFile()
{
    HMODULE library = nullptr;
    if (GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                           reinterpret_cast<const wchar_t*>(&shippedCatalogFolder), &library) == 0)
        return {};
    std::wstring name(32768, L'\0'); // the longest there is
    name.resize(GetModuleFileNameW(library, name.data(), static_cast<DWORD>(name.size())));
    return name;
}

} // namespace

std::string shippedCatalogFolder()
{
    const std::filesystem::path folder = ownFile().parent_path();
    std::error_code unreadable;
    if (folder.empty() || !std::filesystem::is_regular_file(folder / "proj.db", unreadable))
        return {};
    return utf8FromWide(folder.wstring());
}

} // namespace Embedded
