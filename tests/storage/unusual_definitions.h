// Definitions that are not in the catalog.
#pragma once

#include <string>

#include "support/library_definitions.h"

namespace Tests {

/// A user-defined geographic system. Datum and ellipsoid have their names as codes, unless the ellipsoid has an
/// identifier.
struct UserSystem {
    std::wstring code = L"MINE:1";
    std::wstring name = L"System";
    std::wstring datum = L"Datum";
    std::wstring ellipsoid = L"Ellipsoid";
    std::wstring ellipsoidIdentifier = L""; // such as ID["EPSG",7019]
    int semiMajorAxis = 6378000;

    SystemHolder makeSystem() const;
    DatumHolder makeDatum() const;
    EllipsoidHolder makeEllipsoid() const;
};

/// Makes a text that has no run of equal bytes.
std::wstring varied(std::size_t characters);

/// A definition that is neither a system nor a datum nor an ellipsoid.
Orvel::LibraryObject<Library::DefinitionBase> otherDefinition();

} // namespace Tests
