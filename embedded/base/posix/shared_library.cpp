#include "embedded/base/shared_library.h"

#include <dlfcn.h>

namespace Embedded {

SharedLibrary SharedLibrary::open(const std::filesystem::path& file, std::string& error)
{
    // An absolute path: a bare name would be looked for in the system's own folders.
    SharedLibrary library(dlopen(std::filesystem::absolute(file).c_str(), RTLD_NOW | RTLD_LOCAL));
    if (!library) {
        const char* reason = dlerror();
        error = reason != nullptr ? reason : "unknown reason";
    }
    return library;
}

SharedLibrary::~SharedLibrary()
{
    if (handle_ != nullptr)
        static_cast<void>(dlclose(handle_)); // nothing is left to do about a library that will not go
}

void* SharedLibrary::symbol(const char* name) const
{
    return handle_ != nullptr ? dlsym(handle_, name) : nullptr;
}

} // namespace Embedded
