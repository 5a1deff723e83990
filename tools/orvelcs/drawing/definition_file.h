// A user-defined coordinate reference system from a text file.
#pragma once

#include <string>

#include "orvelcs/cli/failure.h"
#include "orvelcs/drawing/holders.h"

namespace Orvelcs {

using DefinedSystem = LibraryObject<Zentara::Infrastructure::SpatialReference::CoordinateReferenceSystemDefinition>;

/// Reads WKT, PROJJSON or a PROJ string from a UTF-8 file ("-": standard input), with or without a byte-order mark.
/// Throws Failure, with the library's status where the library read the text.
DefinedSystem systemFromTextFile(const std::string& file, const std::wstring& code);

} // namespace Orvelcs
