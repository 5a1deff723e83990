// A definition as the library's text, between wide text here and UTF-16 little-endian bytes there.
#pragma once

#include <string>

#include "storage/library_holder.h"

namespace Orvel {

/// The library's text of the definition, with its datum and ellipsoid as definitions of their own where
/// `includeDependents` asks for them. The text must fit into 65,536 bytes with its NUL; `text` is not touched on
/// failure.
Library::Status SerializeToWideText(std::wstring& text, const Library::DefinitionBase* definition,
                                    bool includeDependents);

/// Reads such a text into a new array. statusNullText for a null text, statusEmptyText for an empty one; otherwise the
/// library's status.
Library::Status DeserializeWideText(LibraryObject<Library::DefinitionBaseArray>& definitions, const wchar_t* text);

/// The same from UTF-16 little-endian bytes, which end with their first NUL unit: the caller guarantees one.
Library::Status deserializeUtf16leText(LibraryObject<Library::DefinitionBaseArray>& definitions,
                                       const unsigned char* text);

} // namespace Orvel
