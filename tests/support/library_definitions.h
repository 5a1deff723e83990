// Makes definitions of the spatial-reference library for tests, and describes them for comparison.
#pragma once

#include <string>
#include <vector>

#include "storage/definition_set.h"
#include "storage/library_holder.h"

namespace Tests {

namespace Library = Orvel::Library;
using SystemHolder = Orvel::LibraryObject<Library::CoordinateReferenceSystemDefinition>;
using DatumHolder = Orvel::LibraryObject<Library::DatumDefinition>;
using EllipsoidHolder = Orvel::LibraryObject<Library::EllipsoidDefinition>;
using ArrayHolder = Orvel::LibraryObject<Library::DefinitionBaseArray>;
using Texts = std::vector<std::wstring>;

/// Throws if the status is not statusOk, so that a test is not run on a wrong setup.
void requireOk(Library::Status status);

/// Loads a system from the catalog.
SystemHolder catalogSystem(const wchar_t* code);
/// Makes a geographic system with a code that the catalog does not have.
SystemHolder userSystem(const wchar_t* code = L"MINE:1");
DatumHolder catalogDatum(const wchar_t* code);
EllipsoidHolder catalogEllipsoid(const wchar_t* code);
DatumHolder getDatum(const SystemHolder& system);
EllipsoidHolder getEllipsoid(const SystemHolder& system);

/// The library's text of a definition, with or without entries for its datum and ellipsoid.
std::wstring serializedText(const Library::DefinitionBase* definition, bool includeDependents = true);
/// The library's WKT of a system, exact or not.
std::wstring exportWkt(const SystemHolder& system);
/// Joins the entries of several texts in one text, in that order.
std::wstring joinTexts(const Texts& texts);

/// Gives the kind and code of a definition, "datum EPSG:6258", or of each definition in an array or a set.
std::wstring describe(const Library::DefinitionBase* definition);
Texts describe(const ArrayHolder& definitions);
Texts describe(const Orvel::DefinitionSet& set);

} // namespace Tests
