// Result buffers: the host's linked lists of group codes and values.
#pragma once

#include <cstdint>

#include "../export.h"

/// The group codes for texts, binary chunks and numbers in xrecords and extended data.
namespace QeRb {
enum GroupCode : int {
    kText = 300,              // to 309: wide string
    kBinaryChunk = 310,       // to 319: a run of bytes; not in extended data
    kXdataString = 1000,      // wide string
    kXdataAppName = 1001,     // wide string, the name of a registered application
    kXdataControl = 1002,     // wide string, "{" or "}"
    kXdataBinaryChunk = 1004, // at most 127 bytes
    kXdataReal = 1040,        // double
    kXdataInteger16 = 1070,   // 16-bit integer
    kXdataInteger32 = 1071,   // 32-bit integer
    kListEnd = 5000           // ends the arguments of qeutBuildList; never stored
};

/// The member of the value union that a group code selects.
enum class ValueKind { none, string, binary, real, integer16, integer32 };
} // namespace QeRb

/// A run of bytes. The memory is from qeapp_malloc.
struct QeBinaryChunk {
    short clen; // in bytes
    char* buf;
};

/// One result buffer. A string value is from qeapp_malloc, too. The resbuf owns both.
struct resbuf {
    resbuf* rbnext;
    short restype; // the group code
    union Value {
        double rreal;
        short rint;
        std::int32_t rlong;
        wchar_t* rstring;
        QeBinaryChunk rbinary;
    } resval;
};

/// The kind of value that belongs to a group code. `none` for a code that the host does not store.
QEHOST_API QeRb::ValueKind qeutValueKind(int groupCode);

/// A new resbuf of the group code, with value zero and next null. The caller releases it with qeutRelRb. Null for an
/// unknown code and when memory is short.
QEHOST_API resbuf* qeutNewRb(int groupCode);

/// A new chain from pairs of a group code and a value, ended by kListEnd: wide strings (copied) for string codes,
/// `double` for reals, `int` for integers, `const QeBinaryChunk*` (copied) for chunks. Null when any part fails, a null
/// string or chunk included; then everything is released.
QEHOST_API resbuf* qeutBuildList(int groupCode, ...);

/// A copy of the whole chain. Null when memory is short and for a null chain.
QEHOST_API resbuf* qeutCopyRb(const resbuf* chain);

/// Releases the whole chain with its strings and chunks. Null is allowed.
QEHOST_API void qeutRelRb(resbuf* chain);
