#include "embedded/base/library_file.h"

#include <dlfcn.h>

namespace Embedded {

std::filesystem::path libraryFileOf(const void* address)
{
    ::Dl_info info{};
    if (::dladdr(address, &info) == 0 || info.dli_fname == nullptr)
        return {};
    return info.dli_fname;
}

} // namespace Embedded
