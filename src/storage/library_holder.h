// The holder for what the spatial-reference library returns, and the host results that its statuses become.
#pragma once

#include "platform/host.h"
#include "platform/spatial_reference.h"
#include "storage/holder.h"
#include "storage/ignore_result.h"

namespace Orvel {

namespace Library = Zentara::Infrastructure::SpatialReference;

template <class T>
struct LibraryObjectPolicy {
    using Handle = T*;
    static void dispose(T* object)
    {
        ignoreResult([=] { return Library::Object::Destroy(object); });
    }
};
template <class T>
using LibraryObject = Holder<LibraryObjectPolicy<T>>;

/// Moves the definition into a holder of its run-time type. A definition of another type stays where it is, and the
/// result is empty.
template <class T>
[[nodiscard]] LibraryObject<T> takeAs(LibraryObject<Library::DefinitionBase>& definition)
{
    LibraryObject<T> typed(dynamic_cast<T*>(definition.get()));
    if (typed)
        static_cast<void>(definition.release()); // `typed` owns it now
    return typed;
}

/// The array owns the definition when it can add it; otherwise the holder keeps it.
template <class Definition>
[[nodiscard]] Library::Status addDefinition(Library::DefinitionBaseArray& definitions,
                                            LibraryObject<Definition>& definition)
{
    const Library::Status status = definitions.Add(definition.get());
    if (status == Library::statusOk)
        static_cast<void>(definition.release()); // the array owns it now
    return status;
}

/// eOk for success, eInvalidInput for every failure.
[[nodiscard]] inline Qeapp::ErrorStatus libraryResult(Library::Status status)
{
    return status == Library::statusOk ? Qeapp::eOk : Qeapp::eInvalidInput;
}

/// The same for a call that returns an object. A success without an object counts as a failure.
template <class T>
[[nodiscard]] Qeapp::ErrorStatus libraryResult(Library::Status status, const LibraryObject<T>& object)
{
    return object ? libraryResult(status) : Qeapp::eInvalidInput;
}

} // namespace Orvel
