// Definitions of the spatial-reference library as a test makes and compares them.
#pragma once

#include <string>
#include <vector>

#include "storage/library_holder.h"

namespace Tests {

namespace Library = Orvel::Library;
using SystemHolder = Orvel::LibraryObject<Library::CoordinateReferenceSystemDefinition>;
using DatumHolder = Orvel::LibraryObject<Library::DatumDefinition>;
using EllipsoidHolder = Orvel::LibraryObject<Library::EllipsoidDefinition>;
using ArrayHolder = Orvel::LibraryObject<Library::DefinitionBaseArray>;
using Texts = std::vector<std::wstring>;

/// Throws when the library refused what a test is set up with.
void requireOk(Library::Status status);

/// The catalog's system of a code.
SystemHolder catalogSystem(const wchar_t* code);
/// A geographic system under a code that the catalog does not have.
SystemHolder userSystem(const wchar_t* code = L"MINE:1");
DatumHolder catalogDatum(const wchar_t* code);
EllipsoidHolder catalogEllipsoid(const wchar_t* code);

/// The library's text of a definition, with its datum and ellipsoid as entries of their own or alone.
std::wstring serializedText(const Library::DefinitionBase* definition, bool includeDependents = true);
/// One text with the entries of several, in that order.
std::wstring joinedTexts(const Texts& texts);

/// Kind and code of a definition, "datum EPSG:6258"; of each one in an array.
std::wstring described(const Library::DefinitionBase* definition);
Texts described(const ArrayHolder& definitions);

} // namespace Tests
