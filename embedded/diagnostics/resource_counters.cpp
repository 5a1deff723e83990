#include "embedded/diagnostics/resource_counters.h"

namespace Embedded {
namespace {

ResourceCounts& currentCounts()
{
    static ResourceCounts current;
    return current;
}

constexpr std::array<const char*, static_cast<std::size_t>(ResourceKind::count)> kNames = {
    "open object",         "detached object",  "database",          "dictionary iterator",
    "document lock",       "transaction",      "host buffer",       "resbuf",
    "resbuf memory block", "library object",   "disposable object", "registry key",
    "open file",           "COM memory block", "object reactor",    "decomposition reactor",
};

} // namespace

void ResourceCounters::add(ResourceKind kind, long number)
{
    currentCounts().counts[static_cast<std::size_t>(kind)] += number;
}

ResourceCounts ResourceCounters::now()
{
    return currentCounts();
}

std::string ResourceCounters::difference(const ResourceCounts& earlier, const ResourceCounts& later)
{
    std::string line;
    for (std::size_t kind = 0; kind < kNames.size(); ++kind) {
        const long more = later.counts[kind] - earlier.counts[kind];
        if (more == 0)
            continue;
        if (!line.empty())
            line += ", ";
        line += std::to_string(more);
        line += ' ';
        line += kNames[kind];
        if (more != 1)
            line += 's';
    }
    return line;
}

} // namespace Embedded
