// The declarations of a header of the platform, with their comments: what docs/porting.md and other headers are
// compared with.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Tests {

/// The types of a function, without the names of its parameters.
struct Signature {
    std::string result;
    std::vector<std::string> parameters;
    std::size_t required = 0; // the number of parameters without a default
    bool isConst = false;
};

/// A declaration that the users of a header see.
struct Declaration {
    std::string name; // with its scopes, for example "Qeapp::eOk", "resbuf::rstring"; "QeDbDictionary::~QeDbDictionary"
    std::string text; // on one line, without body, initialisers of constructors, attributes and macros
    std::string comment; // the text after three slashes, on one line; empty without one
    std::string section; // the last comment of one line between empty lines outside of all scopes, a heading
    bool isFunction = false;
    bool isForward = false; // of a type
    Signature signature;    // of a function
};

/// Reads the declarations in order: types, functions, constants, enumerators, macros, and the members of classes that
/// are not private. Names of the spatial-reference library have no namespace. Leaves out deleted functions. Reads
/// declarations with one declarator; it does not read all of C++.
std::vector<Declaration> parseDeclarations(std::string_view header);

/// Whether it is a constructor, a destructor or an operator, which a compiler may declare by itself.
bool isSpecialMember(const Declaration& declaration);

} // namespace Tests
