#include "module/mapped_files.h"

#include <dlfcn.h>

#include <fstream>
#include <string>

namespace Tests {

bool isMapped(const std::filesystem::path& file)
{
    std::ifstream maps("/proc/self/maps");
    const std::string name = file.filename().string();
    for (std::string line; std::getline(maps, line);) {
        if (line.ends_with(name))
            return true;
    }
    return false;
}

bool mapAndUnmap(const std::filesystem::path& file)
{
    void* const library = ::dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
    return library != nullptr && ::dlclose(library) == 0;
}

} // namespace Tests
