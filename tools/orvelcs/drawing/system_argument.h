// SYSTEM on the command line: a code of the catalog, or @FILE for the system of a drawing or of a text.
#pragma once

#include <string>

#include <CLI/App.hpp>

#include "orvelcs/cli/output.h"
#include "orvelcs/drawing/catalog_lookup.h"
#include "orvelcs/drawing/holders.h"

namespace Orvelcs {

/// The help of an argument that is a SYSTEM.
inline constexpr const char* kSystemHelp = "SYSTEM is a code of the catalog such as EPSG:25832, or @FILE: the system "
                                           "of a drawing, or a text with WKT, PROJJSON "
                                           "or a PROJ string. @- is standard input.";

enum class SystemSource { catalog, drawing, text };

struct NamedSystem {
    SystemHolder definition;
    SystemSource source = SystemSource::catalog;
    std::wstring code; // empty for a text that gives its system no identifier
};

/// Returns whether the SYSTEM is @FILE.
bool namesFile(const std::string& system);
/// Returns whether it is standard input.
bool namesStandardInput(const std::string& system);

/// Returns whether the file begins as drawings do. Only a regular file is read for that.
bool isDrawingFile(const std::string& file);

/// Reads the SYSTEM that the argument has as its value. The system of a text gets `codeOfText`, or if that is empty the
/// identifier in the text, unless the catalog has another system under it. Throws Failure: `unknownCode` for a code
/// that the catalog does not have, and nothing found for a drawing without a system.
NamedSystem readSystem(const std::string& argument, const std::string& system, const Output& output,
                       ExitStatus unknownCode = ExitStatus::nothingFound, const std::wstring& codeOfText = {});

/// The same for a system that is stored, whose text needs `--code`. No other system may have one. Throws Failure for
/// wrong usage, and for a code that is the catalog's.
NamedSystem readSystemToStore(const std::string& argument, const std::string& system, const CLI::Option& codeOption,
                              const std::string& code, const Output& output);

/// The properties of the system, without a code if it has none.
SystemDescription describe(const NamedSystem& system);

/// Throws Failure unless the code can be that of a user-defined system.
void checkUserCode(const std::wstring& code);

} // namespace Orvelcs
