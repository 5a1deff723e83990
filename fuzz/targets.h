// What is fuzzed: functions that take any bytes whatever, and end the process where the product does not do with them
// what it promises.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace Fuzz {

using Input = std::span<const std::uint8_t>;

/// Unpacking of any bytes, against a second implementation.
void unpack(Input input);
/// Packing of any bytes, against a second implementation, and back.
void pack(Input input);
/// Any bytes as a packed definition.
void packedDefinition(Input input);
/// Streams of definitions below a right class identifier and with a right checksum, which chance does not hit upon.
void definitionStream(Input input);
/// Any bytes as a serialized block.
void serializedBlock(Input input);
/// Chains of items in the definition xrecord of a drawing, against a second reader.
void definitionXrecord(Input input);
/// Any text as one item of a transformation configuration, against a second parser.
void itemText(Input input);
/// Any text as a transformation configuration, against a second parser.
void collectionText(Input input);
/// Any bytes as the user's settings file.
void settingsFile(Input input);
/// Changed rows of a drawing, whose file is loaded, saved and loaded.
void drawingRows(Input input);
/// Changed rows of a drawing, whose file is checked and salvaged.
void drawingCheck(Input input);
/// Any bytes as a drawing file, or changed bytes of one, which is loaded, saved and loaded.
void drawingFile(Input input);
/// Sequences of operations of the host and of the module.
void operations(Input input);

struct Target {
    std::string_view name; // of its folder of inputs
    void (*run)(Input input);
};

std::span<const Target> targets();
/// Ends the process where there is no such target.
const Target& targetNamed(std::string_view name);

} // namespace Fuzz
