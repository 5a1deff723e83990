#include "embedded/spatial_reference/projjson/proj_functions.h"

#ifdef ORVEL_PROJ_LIBRARY

#include <dlfcn.h>

#include <stdexcept>
#include <string>

namespace Embedded {
namespace {

/// `missing` is what dlerror explains.
[[noreturn]] void throwDynamicLinkError(const char* missing)
{
    const char* reason = dlerror();
    throw std::runtime_error(std::string(missing) +
                             " cannot be loaded: " + (reason != nullptr ? reason : "unknown reason"));
}

/// PROJ stays loaded: its context lives as long as the process.
void* loadProj()
{
    void* library = dlopen(ORVEL_PROJ_LIBRARY, RTLD_LAZY | RTLD_LOCAL);
    if (library == nullptr)
        throwDynamicLinkError("PROJ");
    return library;
}

} // namespace

void* projFunction(const char* name)
{
    static void* const library = loadProj();
    void* function = dlsym(library, name);
    if (function == nullptr)
        throwDynamicLinkError(name);
    return function;
}

} // namespace Embedded

#endif
