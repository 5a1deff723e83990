#include "embedded/base/shared_library.h"

#include <dlfcn.h>

#include "embedded/base/path.h"

namespace Embedded {

Expected<SharedLibrary> SharedLibrary::open(const std::filesystem::path& file)
{
    // The full path, since a name without a folder would be searched for in the system's own folders.
    SharedLibrary library(dlopen(fullPath(file).c_str(), RTLD_NOW | RTLD_LOCAL));
    if (library.handle_ == nullptr) {
        const char* reason = dlerror();
        return failure(0, reason != nullptr ? reason : "unknown reason");
    }
    return library;
}

SharedLibrary::~SharedLibrary()
{
    if (handle_ != nullptr)
        static_cast<void>(dlclose(handle_)); // a library that cannot be unloaded stays
}

void* SharedLibrary::symbol(const char* name) const
{
    return dlsym(handle_, name);
}

std::filesystem::path libraryFileAt(const void* address)
{
    ::Dl_info info{};
    if (::dladdr(address, &info) == 0 || info.dli_fname == nullptr)
        return {};
    return info.dli_fname;
}

} // namespace Embedded
