#include "module/process_resources.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace Tests {

ProcessResources processResources()
{
    ProcessResources resources;
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        if (word == "RssAnon:")
            status >> resources.bytes;
    }
    resources.bytes *= 1024;
    const std::filesystem::directory_iterator files("/proc/self/fd");
    resources.handles = static_cast<std::size_t>(std::distance(begin(files), end(files)));
    return resources;
}

} // namespace Tests
