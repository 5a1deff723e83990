// The fuzz targets: functions that take any bytes and end the process when the product breaks a promise.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace Fuzz {

using Input = std::span<const std::uint8_t>;

/// Unpacks any bytes and compares the result with a second implementation.
void unpack(Input input);
/// Packs any bytes, compares the result with a second implementation, and unpacks it.
void pack(Input input);
/// Reads any bytes as a packed definition.
void packedDefinition(Input input);
/// Reads any bytes as a stream of definitions. Adds the class identifier and the checksum, which random input would
/// miss.
void definitionStream(Input input);
/// Reads any bytes as a serialized block.
void serializedBlock(Input input);
/// Reads chains of items in the definition xrecord of a drawing and compares the result with a second reader.
void definitionXrecord(Input input);
/// Reads any text as an item of a transformation configuration and compares the result with a second parser.
void itemText(Input input);
/// Reads any text as a transformation configuration and compares the result with a second parser.
void collectionText(Input input);
/// Reads any bytes as the user's settings file.
void settingsFile(Input input);
/// Changes rows of a drawing; loads the file, saves it and loads it again.
void drawingRows(Input input);
/// Changes rows of a drawing; checks the file and salvages it.
void drawingCheck(Input input);
/// Takes any bytes as a drawing file, or changes bytes of one; loads the file, saves it and loads it again.
void drawingFile(Input input);
/// Runs a session of steps of the host and of the module's clients.
void operations(Input input);

struct Target {
    std::string_view name; // also the name of its folders
    void (*run)(Input input);
};

std::span<const Target> targets();
/// Ends the process if there is no such target.
const Target& findTarget(std::string_view name);

} // namespace Fuzz
