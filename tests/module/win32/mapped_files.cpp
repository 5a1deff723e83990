#include "module/mapped_files.h"

#include <windows.h>

namespace Tests {

bool isMapped(const std::filesystem::path& file)
{
    return GetModuleHandleW(file.filename().c_str()) != nullptr;
}

bool mapAndUnmap(const std::filesystem::path& file)
{
    const HMODULE library = LoadLibraryExW(file.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
    return library != nullptr && FreeLibrary(library) != 0;
}

} // namespace Tests
