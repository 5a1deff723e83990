// Definitions as the library's text. The module has wide text, the library reads and writes UTF-16 little-endian bytes.
#pragma once

#include <string>

#include "storage/library_holder.h"

namespace Orvel {

/// Writes the definition as the library's text. With `includeDependents` the datum and the ellipsoid follow as
/// definitions of their own. The text with its NUL must fit into 65,536 bytes. On failure `text` is unchanged.
Library::Status SerializeToWideText(std::wstring& text, const Library::DefinitionBase* definition,
                                    bool includeDependents);

/// Reads such a text into a new array. Returns statusNullText for a null text, statusEmptyText for an empty one, and
/// otherwise the library's status.
Library::Status DeserializeWideText(LibraryObject<Library::DefinitionBaseArray>& definitions, const wchar_t* text);

/// The same from UTF-16 little-endian bytes up to their first NUL unit, which the caller guarantees.
Library::Status deserializeUtf16leText(LibraryObject<Library::DefinitionBaseArray>& definitions,
                                       const unsigned char* text);

} // namespace Orvel
