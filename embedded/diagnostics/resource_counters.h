// What the platform holds for its clients at this moment, by kind. Counting costs an addition; nothing is switched on.
#pragma once

#include <array>
#include <cstddef>
#include <string>

#include "platform/export.h"

namespace Embedded {

enum class ResourceKind : std::size_t {
    openObject,     // opens of database-resident objects, one for each opener
    detachedObject, // host objects that are in no database
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
    comMemory, // what CoTaskMemFree takes back
    objectReactor,
    decompositionReactor,
    count
};

/// A count for each kind.
struct ResourceCounts {
    std::array<long, static_cast<std::size_t>(ResourceKind::count)> held{};

    long operator[](ResourceKind kind) const { return held[static_cast<std::size_t>(kind)]; }
    friend bool operator==(const ResourceCounts&, const ResourceCounts&) = default;
};

class FQCORE_API ResourceCounters {
public:
    static void add(ResourceKind kind, long number = 1);
    static void remove(ResourceKind kind, long number = 1) { add(kind, -number); }
    static ResourceCounts now();
    /// What `later` holds beyond `earlier`, as a line such as "2 open objects, 1 resbuf"; empty when nothing.
    static std::string difference(const ResourceCounts& earlier, const ResourceCounts& later);
};

} // namespace Embedded
