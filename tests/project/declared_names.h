// The names that a header of interfaces declares.
#pragma once

#include <set>
#include <string>
#include <string_view>

namespace Tests {

using Names = std::set<std::string>;

/// The qualified names of the types, functions, constants, enumerators and macros that a header declares, and of its
/// classes' public members: `Namespace::enumerator`, `Class::member`. Leaves out constructors, destructors, operators
/// and forward declarations. Reads declarations with one declarator, as interfaces have them; it does not read all of
/// C++.
Names parseDeclaredNames(std::string_view header);

} // namespace Tests
