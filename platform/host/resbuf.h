// Result buffers: the host's linked lists of group codes and values.
#pragma once

#include <cstdint>

#include "../export.h"

/// The group codes that carry a text, a binary chunk or a number in xrecords and extended data.
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

/// Which member of the value union a group code selects.
enum class ValueKind { none, string, binary, real, integer16, integer32 };
} // namespace QeRb

/// A run of bytes; the memory comes from qeapp_malloc.
struct QeBinaryChunk {
    short clen; // in bytes
    char* buf;
};

/// One result buffer. A string value comes from qeapp_malloc; both kinds of memory are owned by the resbuf.
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

/// The kind of value that a group code carries; `none` for a code that the host does not store.
QEHOST_API QeRb::ValueKind qeutValueKind(int groupCode);

/// A new resbuf of the given group code, its value zero and its next null. Null for an unknown code or without memory.
/// Released with qeutRelRb.
QEHOST_API resbuf* qeutNewRb(int groupCode);

/// A new chain from pairs of a group code and a value, ended by kListEnd: wide strings (copied) for string codes,
/// `double` for reals, `int` for integers, `const QeBinaryChunk*` (copied) for chunks. Null when any of it fails, a
/// null string or chunk included; then nothing is left allocated.
QEHOST_API resbuf* qeutBuildList(int groupCode, ...);

/// A copy of the whole chain, or null without memory or for a null chain.
QEHOST_API resbuf* qeutCopyRb(const resbuf* chain);

/// Releases the whole chain with its strings and chunks; null is allowed.
QEHOST_API void qeutRelRb(resbuf* chain);
