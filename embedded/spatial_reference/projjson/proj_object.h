// The codes of PROJ's objects.
#pragma once

#include <string>

#include "embedded/spatial_reference/projjson/catalog_code.h"
#include "embedded/spatial_reference/projjson/proj_context.h"

namespace Embedded {

/// AUTHORITY:CODE of an object; empty when it has none.
std::string codeOfObject(const PJ* object);

/// The code of the catalog's object that PROJ made this one from: with its grid under another file's name an operation
/// has the code DERIVED_FROM(EPSG):1241, and inverted INVERSE(EPSG):1241. Empty when it has none.
std::string originalCodeOf(const PJ* object);

} // namespace Embedded
