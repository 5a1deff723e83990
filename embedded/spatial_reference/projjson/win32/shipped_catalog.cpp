#include "embedded/spatial_reference/projjson/shipped_catalog.h"

#include <filesystem>
#include <system_error>

#include "embedded/base/shared_library.h"
#include "embedded/base/text.h"

namespace Embedded {

std::string shippedCatalogFolder()
{
    const std::filesystem::path folder =
        libraryFileAt(reinterpret_cast<const void*>(&shippedCatalogFolder)).parent_path();
    std::error_code unreadable;
    if (folder.empty() || !std::filesystem::is_regular_file(folder / "proj.db", unreadable))
        return {};
    return utf8FromWide(folder.wstring());
}

char searchPathSeparator()
{
    return ';';
}

} // namespace Embedded
