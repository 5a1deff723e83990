// Finds out that a file and a code of the catalog stand in each other's place.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace Orvelcs {

/// The first of `files` that is a code of the catalog and no file, where `code` is a file or is named like a drawing;
/// nothing where the arguments are not swapped. `code` must not be a code of the catalog. Looks at the first and the
/// last of `files` only.
std::optional<std::string> findSwappedCode(const std::string& code, const std::vector<std::string>& files);

/// "; it is a code of the catalog, …" for a file that does not exist, where it is one; else empty.
std::string codeInPlaceOfFileClause(const std::string& file);

/// "; it is a file, …" for an unknown code, where there is a file of that name or it is named like a drawing; else
/// empty.
std::string fileInPlaceOfCodeClause(const std::string& code);

} // namespace Orvelcs
