// What a header of interfaces declares, by name.
#pragma once

#include <set>
#include <string>
#include <string_view>

namespace Tests {

using Names = std::set<std::string>;

/// The qualified names of the types, functions, constants, enumerators and macros that a header declares, and of its
/// classes' public members: `Namespace::enumerator`, `Class::member`. Constructors, destructors, operators and forward
/// declarations have none. Reads plain declarations, one declarator each, as interfaces have them; not all of C++.
Names declaredNames(std::string_view header);

} // namespace Tests
