// What the library uses: each call records itself and fetches its answer.
#pragma once

#include <cstddef>
#include <initializer_list>
#include <string>
#include <vector>

#include "recording/recorder.h"

namespace Zentara::Infrastructure::SpatialReference {

/// The library's own data of a definition, as the interface names it.
struct DefinitionData {
    Tests::Recording::Definition definition;
};

} // namespace Zentara::Infrastructure::SpatialReference

namespace Tests::Recording {

/// Records the call. Returns the status that the test set for it, or success.
Library::Status record(const std::string& name, std::initializer_list<std::string> arguments);

std::string formatArgument(const Library::DefinitionBase* definition);
std::string formatArgument(const wchar_t* text);
std::string formatArgument(const unsigned char* bytes, std::size_t length);
/// "1024 zero bytes", or the number of bytes if not all are zero.
std::string bufferText(const unsigned char* buffer, std::size_t length);

/// Records a call that returns an object: the result of `make`, or null if the test asks for it.
template <class Object, class Make>
Library::Status recordCreation(const std::string& name, std::initializer_list<std::string> arguments, Object*& output,
                               const Make& make)
{
    const Library::Status status = record(name, arguments);
    output = answers().withoutObject.contains(name) ? nullptr : make();
    return status;
}

/// Stores definitions and returns their number.
std::size_t store(const std::vector<Definition>& definitions);
/// The definitions of a number; none for an unknown number.
std::vector<Definition> stored(std::size_t number);

} // namespace Tests::Recording
