// Finds where the module names a class of the platform with its class-key. A product may give its own class that name
// by an alias, which no `class` or `struct` may precede.
#pragma once

#include <set>
#include <string>
#include <vector>

#include "project/source_tree.h"

namespace Tests {

/// The classes and enumerations that the files define.
std::set<std::string> findDefinedTypes(const std::vector<SourceFile>& files);

/// One complaint for each place where a file writes `class`, `struct`, `union` or `enum` before one of the names: a
/// declaration without its header, or a type spelled with its class-key.
std::vector<std::string> findForwardDeclarations(const std::vector<SourceFile>& files,
                                                 const std::set<std::string>& names);

} // namespace Tests
