// Definitions that are not in the catalog.
#pragma once

#include <string>

#include "support/library_definitions.h"

namespace Tests {

/// A geographic system of the user's; ellipsoid and datum have their names for codes unless an identifier is given.
struct UserSystem {
    std::wstring code = L"MINE:1";
    std::wstring name = L"System";
    std::wstring datum = L"Datum";
    std::wstring ellipsoid = L"Ellipsoid";
    std::wstring ellipsoidIdentifier = L""; // ID["EPSG",7019]
    int semiMajorAxis = 6378000;

    SystemHolder system() const;
    DatumHolder datumOfSystem() const;
    EllipsoidHolder ellipsoidOfSystem() const;
};

/// A text that has no run of bytes.
std::wstring varied(std::size_t characters);

/// A definition that is neither a system nor a datum nor an ellipsoid.
Orvel::LibraryObject<Library::DefinitionBase> otherDefinition();

} // namespace Tests
