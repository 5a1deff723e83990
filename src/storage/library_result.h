// What a status of the spatial-reference library comes to where a function answers with the host's result.
#pragma once

#include "platform/host.h"
#include "storage/library_holder.h"

namespace Orvel {

/// eOk for success, eInvalidInput for every failure.
[[nodiscard]] Qeapp::ErrorStatus LibraryResult(Library::Status status);

/// The same for a call that hands out an object. A success without an object counts as a failure.
template <class T>
[[nodiscard]] Qeapp::ErrorStatus LibraryResult(Library::Status status, const LibraryObject<T>& object)
{
    return object ? LibraryResult(status) : Qeapp::eInvalidInput;
}

} // namespace Orvel
