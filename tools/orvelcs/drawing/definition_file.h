// A user-defined coordinate reference system from a text.
#pragma once

#include <string>

#include "orvelcs/cli/failure.h"
#include "orvelcs/drawing/holders.h"

namespace Orvelcs {

using DefinedSystem = LibraryObject<Zentara::Infrastructure::SpatialReference::CoordinateReferenceSystemDefinition>;

/// Reads the text of a definition from a UTF-8 file ("-": standard input), with or without a byte-order mark. Throws
/// Failure where it cannot be read or is empty.
std::wstring readDefinitionText(const std::string& file);

/// The text as it came from a file, likewise.
std::wstring definitionTextFrom(const std::string& subject, const std::string& bytes);

/// Makes the system that the text describes as WKT, PROJJSON or a PROJ string. Throws Failure about `subject`, with the
/// library's status.
DefinedSystem systemFromText(const std::string& subject, const std::wstring& text, const std::wstring& code);

/// The identifier that the text gives its system; empty without one. Throws Failure as systemFromText does.
std::wstring identifierInText(const std::string& subject, const std::wstring& text);

} // namespace Orvelcs
