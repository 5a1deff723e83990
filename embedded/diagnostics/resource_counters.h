// Counts what the platform holds for its clients, by kind. Counting is always on and costs an addition.
#pragma once

#include <array>
#include <cstddef>
#include <string>

#include "platform/export.h"

namespace Embedded {

enum class ResourceKind : std::size_t {
    openObject,     // one for each open of a database object
    detachedObject, // host objects outside any database
    database,       // drawings
    dictionaryIterator,
    documentLock,
    transaction,
    hostBuffer, // qeutNewString, qeutNewBuffer
    resbuf,
    resbufMemory,     // qeapp_malloc
    libraryObject,    // spatial-reference objects
    disposableObject, // foundation objects
    registryKey,
    textFile,  // streams of _wfsopen
    comMemory, // released by CoTaskMemFree
    objectReactor,
    decompositionReactor,
    count
};

/// A count for each kind.
struct ResourceCounts {
    std::array<long, static_cast<std::size_t>(ResourceKind::count)> counts{};

    long operator[](ResourceKind kind) const { return counts[static_cast<std::size_t>(kind)]; }
    friend bool operator==(const ResourceCounts&, const ResourceCounts&) = default;
};

class FQCORE_API ResourceCounters {
public:
    static void add(ResourceKind kind, long number = 1);
    static void remove(ResourceKind kind, long number = 1) { add(kind, -number); }
    static ResourceCounts now();
    /// How `later` differs from `earlier`, as a line such as "2 open objects, 1 resbuf"; empty for no difference.
    static std::string difference(const ResourceCounts& earlier, const ResourceCounts& later);
};

} // namespace Embedded
