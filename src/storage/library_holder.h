// The holder for what the spatial-reference library hands out, and what its statuses come to as results of the host.
#pragma once

#include "platform/host.h"
#include "platform/spatial_reference.h"
#include "storage/holder.h"

namespace Orvel {

namespace Library = Zentara::Infrastructure::SpatialReference;

template <class T>
struct LibraryObjectPolicy {
    using Handle = T*;
    static void dispose(T* object) { Library::Object::Destroy(object); }
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

/// The array takes the definition over when it can add it; otherwise the holder keeps it.
template <class Definition>
[[nodiscard]] Library::Status addDefinition(Library::DefinitionBaseArray& definitions,
                                            LibraryObject<Definition>& definition)
{
    const Library::Status added = definitions.Add(definition.get());
    if (added == Library::statusOk)
        static_cast<void>(definition.release()); // the array's from here on
    return added;
}

/// eOk for success, eInvalidInput for every failure.
[[nodiscard]] inline Qeapp::ErrorStatus libraryResult(Library::Status status)
{
    return status == Library::statusOk ? Qeapp::eOk : Qeapp::eInvalidInput;
}

/// The same for a call that hands out an object. A success without an object counts as a failure.
template <class T>
[[nodiscard]] Qeapp::ErrorStatus libraryResult(Library::Status status, const LibraryObject<T>& object)
{
    return object ? libraryResult(status) : Qeapp::eInvalidInput;
}

} // namespace Orvel
