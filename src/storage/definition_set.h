// A coordinate reference system with the datum and the ellipsoid that are stored beside it.
#pragma once

#include "storage/library_holder.h"

namespace Orvel {

/// Has a slot for each of the three kinds of definition.
struct DefinitionSet {
    LibraryObject<Library::CoordinateReferenceSystemDefinition> system;
    LibraryObject<Library::DatumDefinition> datum;
    LibraryObject<Library::EllipsoidDefinition> ellipsoid;

    /// Puts the definition into the slot of its kind and destroys the former one there. Destroys a definition of
    /// another kind. An empty holder changes nothing.
    void take(LibraryObject<Library::DefinitionBase> definition);
};

/// Returns whether the definitions belong together and to the code: the system has the code and, where it is geographic
/// or projected, the datum and the ellipsoid have the codes that it names. The comparison ignores case. A query that
/// fails makes the set invalid.
[[nodiscard]] bool ValidateCsDefinitionSet(const wchar_t* code,
                                           const Library::CoordinateReferenceSystemDefinition* system,
                                           const Library::DatumDefinition* datum,
                                           const Library::EllipsoidDefinition* ellipsoid);

/// Gives the ellipsoid to the datum and the datum to the system, or the ellipsoid to a system without a datum.
void linkDefinitionSet(DefinitionSet& set);

} // namespace Orvel
