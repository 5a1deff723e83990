// A user-defined coordinate reference system from a text.
#pragma once

#include <string>

#include "orvelcs/cli/failure.h"
#include "orvelcs/drawing/holders.h"

namespace Orvelcs {

/// The text of a definition, from the bytes of a UTF-8 file with or without a byte-order mark. Throws Failure about
/// `subject` where they are no such text, too many, or blanks alone.
std::wstring definitionTextFrom(const std::string& subject, const std::string& bytes);

/// Makes the system that the text describes as WKT, PROJJSON or a PROJ string. Throws Failure about `subject`, with the
/// library's status.
SystemHolder systemFromText(const std::string& subject, const std::wstring& text, const std::wstring& code);

/// The identifier that the text gives its system; empty without one. Throws Failure as systemFromText does.
std::wstring identifierInText(const std::string& subject, const std::wstring& text);

} // namespace Orvelcs
