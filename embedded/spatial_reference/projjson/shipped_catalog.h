// The catalog that was shipped with the program, as against one that the machine has for all its programs.
#pragma once

#include <string>

namespace Embedded {

/// What PROJ puts between the folders of its search path.
char searchPathSeparator();

/// The folder of this library's own file when a `proj.db` lies in it, as UTF-8; empty without one, and on systems where
/// programs share one catalog.
std::string shippedCatalogFolder();

} // namespace Embedded
