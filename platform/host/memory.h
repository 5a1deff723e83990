// The host's allocators. Release memory with the function that belongs to its allocator.
#pragma once

#include <cstddef>

#include "../export.h"
#include "error_status.h"

/// Copies the NUL-terminated `source` into a new host string.
/// On eOk `copy` is the string, which the caller releases with qeutDelBuffer; otherwise it is null.
/// Returns eInvalidInput for a null source, eOutOfMemory when memory is short.
QEHOST_API Qeapp::ErrorStatus qeutNewString(const wchar_t* source, wchar_t*& copy);

/// Allocates a host buffer of `lengthInBytes` bytes, all zero. Returns eInvalidInput for a length of 0.
/// On eOk the caller releases `buffer` with qeutDelBuffer; otherwise it is null.
QEHOST_API Qeapp::ErrorStatus qeutNewBuffer(unsigned char*& buffer, std::size_t lengthInBytes);

/// Releases a string of qeutNewString or a buffer of qeutNewBuffer and sets the pointer to null. Null is allowed.
QEHOST_API void qeutDelBuffer(wchar_t*& text);
QEHOST_API void qeutDelBuffer(unsigned char*& buffer);

/// Memory for the strings and binary chunks that a resbuf owns. qeutRelRb releases it with the resbuf, qeapp_free by
/// itself. Null when memory is short.
QEHOST_API void* qeapp_malloc(std::size_t lengthInBytes);
QEHOST_API void qeapp_free(void* memory);

/// The heap of host objects. The memory is zero-filled. Null when memory is short.
QEHOST_API void* qeHeapAlloc(std::size_t lengthInBytes);
QEHOST_API void qeHeapFree(void* memory);
