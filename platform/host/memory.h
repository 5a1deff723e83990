// The host's allocators. What comes from one of them goes back to the same one.
#pragma once

#include <cstddef>

#include "../export.h"
#include "error_status.h"

/// Copies the NUL-terminated `source` into a new host string.
/// On eOk `copy` is the string, which the caller releases with qeutDelBuffer; otherwise it is null.
/// Returns eInvalidInput for a null source, eOutOfMemory when there is no memory.
QEHOST_API Qeapp::ErrorStatus qeutNewString(const wchar_t* source, wchar_t*& copy);

/// Allocates a host buffer of `lengthInBytes` bytes, all zero; a length of 0 is refused with eInvalidInput.
/// On eOk `buffer` is released by the caller with qeutDelBuffer; otherwise it is null.
QEHOST_API Qeapp::ErrorStatus qeutNewBuffer(unsigned char*& buffer, std::size_t lengthInBytes);

/// Releases a string of qeutNewString or a buffer of qeutNewBuffer and sets the pointer to null. Null is allowed.
QEHOST_API void qeutDelBuffer(wchar_t*& text);
QEHOST_API void qeutDelBuffer(unsigned char*& buffer);

/// Memory for the strings and binary chunks that a resbuf owns; released by qeutRelRb with the resbuf, or by
/// qeapp_free. Null when there is no memory.
QEHOST_API void* qeapp_malloc(std::size_t lengthInBytes);
QEHOST_API void qeapp_free(void* memory);

/// The heap that host objects live on. The memory is zero-filled; null when there is none.
QEHOST_API void* qeHeapAlloc(std::size_t lengthInBytes);
QEHOST_API void qeHeapFree(void* memory);
