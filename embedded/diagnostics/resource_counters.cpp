#include "embedded/diagnostics/resource_counters.h"

namespace Embedded {
namespace {

AuditCounts& counts()
{
    static AuditCounts current;
    return current;
}

constexpr std::array<const char*, static_cast<std::size_t>(Held::count)> kNames = {
    "open object",         "detached object",  "database",          "dictionary iterator",
    "document lock",       "transaction",      "host buffer",       "resbuf",
    "resbuf memory block", "library object",   "disposable object", "registry key",
    "open file",           "COM memory block", "object reactor",    "decomposition reactor",
};

} // namespace

void Audit::add(Held kind, long number)
{
    counts().held[static_cast<std::size_t>(kind)] += number;
}

AuditCounts Audit::now()
{
    return counts();
}

std::string Audit::difference(const AuditCounts& earlier, const AuditCounts& later)
{
    std::string line;
    for (std::size_t kind = 0; kind < kNames.size(); ++kind) {
        const long more = later.held[kind] - earlier.held[kind];
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
