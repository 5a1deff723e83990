#include "embedded/base/shared_library.h"

#include <windows.h>

#include "embedded/base/display_name.h"
#include "embedded/base/system_error.h"
#include "embedded/base/win32/full_name.h"

namespace Embedded {

SharedLibrary SharedLibrary::open(const std::filesystem::path& file, std::string& error)
{
    // The libraries that it needs are looked for in its own folder first, not in that of the program.
    SharedLibrary library(LoadLibraryExW(fullNameOf(file).c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH));
    if (!library)
        error = displayName(file) + ": " + systemMessage(lastSystemError());
    return library;
}

SharedLibrary::~SharedLibrary()
{
    if (handle_ != nullptr)
        static_cast<void>(FreeLibrary(static_cast<HMODULE>(handle_))); // nothing is left to do about one that stays
}

void* SharedLibrary::symbol(const char* name) const
{
    return handle_ != nullptr ? reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(handle_), name)) : nullptr;
}

} // namespace Embedded
