// The hooks of port_check. A product implements them in a source of its own, links that with port_check.cpp, its host's
// libraries and the module, and runs the program.
//
// Only what the module's platform has no call for is a hook. The first three and `systems` are required. A product that
// does not offer one of the others returns false or an empty text; the checks that need it are then "not tried".
#pragma once

#include <cstddef>
#include <string>

#include <platform/host.h>

namespace PortCheck {

/// Makes an empty drawing in the newest format, opens it as the current document and makes it the working database, all
/// as the product does for its user. Null when that is not possible.
QeDbDatabase* newDrawing();

/// Closes such a drawing without saving it.
void closeDrawing(QeDbDatabase* drawing);

/// Does what the product's own save does before it writes: calls every decomposition reactor with the format of that
/// number, and undoes their work when one of them answers or records a failure. Returns whether all of them succeeded.
/// The drawing is not written.
bool prepareForSave(QeDbDatabase* drawing, QeDb::QeDbDwgVersion version);

/// What the product's spatial-reference library knows. Texts are valid until the program ends. Codes are spelled as the
/// library spells them.
struct Systems {
    const wchar_t* projected = nullptr;  // the code of a projected system of the catalog that has a datum
    const wchar_t* geographic = nullptr; // the code of a geographic one that has another datum and another ellipsoid
    // A system that is not in the catalog: its code, and the text that DefinitionStream::Serialize_s writes for it with
    // its dependents.
    const wchar_t* userDefinedCode = nullptr;
    const wchar_t* userDefinedText = nullptr;
    // The names of two geodetic transformations, one that may be applied inversely and one that may not. Null: none.
    const wchar_t* reversibleTransformation = nullptr;
    const wchar_t* irreversibleTransformation = nullptr;
    const wchar_t* reversiblePath = nullptr; // the name of a geodetic path that may be applied inversely. Null: none.
};
Systems systems();

/// Optional. Loads the module with the product's own loader, which sends it message 1. True for a module that is loaded
/// already. A product that answers false initialises the module itself before the program begins.
bool loadModule();
/// Optional. Unloads it on demand, as the product's own loader does. It may stay mapped because the program links it.
bool unloadModule();

/// Optional. From now on counts the calls of the platform that can fail, and makes the one of that number fail, counted
/// from 1, and no other; 0 makes none fail. Calls of the host, of the library and of the system count that return a
/// status, a bool or a pointer that may be null, as does `operator new` of the host's objects; those that give
/// something back do not, such as close, abortTransaction and Object::Destroy (docs/porting.md, "Exceptions").
bool failCall(std::size_t number);
/// How many calls were made since then, and the name of the one that was made to fail.
struct Calls {
    std::size_t made = 0;
    std::string failed;
};
Calls callsMade();

/// Optional. What clients have opened, locked or allocated and not given back at this moment, as a text to print. Two
/// texts are compared: equal ones mean that all was given back in between.
std::string heldNow();

} // namespace PortCheck
