// The library's end of the recorder: what each call reports, and what it is answered.
#pragma once

#include <cstddef>
#include <initializer_list>
#include <string>
#include <vector>

#include "recording/recorder.h"

namespace Zentara::Infrastructure::SpatialReference {

/// What the interface calls the library's own record of a definition.
struct DefinitionData {
    Tests::Recording::Definition definition;
};

} // namespace Zentara::Infrastructure::SpatialReference

namespace Tests::Recording {

/// Writes the call down; the status that it is to have, which is success where the test says nothing.
Library::Status record(const std::string& name, std::initializer_list<std::string> arguments);

std::string textOf(const Library::DefinitionBase* definition);
std::string textOf(const wchar_t* text);
std::string textOf(const unsigned char* bytes, std::size_t length);
/// "1024 zero bytes", or how many that are not all zero.
std::string bufferText(const unsigned char* buffer, std::size_t length);

/// Records a call that hands out an object: what `make` makes, or null if the test wants that.
template <class Object, class Make>
Library::Status recordMaking(const std::string& name, std::initializer_list<std::string> arguments, Object*& output,
                             const Make& make)
{
    const Library::Status status = record(name, arguments);
    output = answers().withoutObject.contains(name) ? nullptr : make();
    return status;
}

/// The number under which the definitions can be found again.
std::size_t store(const std::vector<Definition>& definitions);
/// None under a number that was not given out.
std::vector<Definition> stored(std::size_t number);

} // namespace Tests::Recording
