#include "orvelcs/cli/json_array.h"

#include <utility>

namespace Orvelcs {
namespace {

/// A text of JSON has line ends between its parts only.
std::string indented(const std::string& json)
{
    std::string text = "  ";
    for (const char character : json) {
        text += character;
        if (character == '\n')
            text += "  ";
    }
    return text;
}

} // namespace

JsonArray::JsonArray(Output& output) : output_(output), isOpen_(output.json())
{
    if (isOpen_)
        output_.write("[");
}

void JsonArray::add(const Json& element)
{
    if (!isOpen_)
        return;
    output_.write(std::exchange(isEmpty_, false) ? "\n" : ",\n");
    output_.write(indented(printedJson(element)));
}

void JsonArray::close()
{
    if (std::exchange(isOpen_, false))
        output_.write(isEmpty_ ? "]\n" : "\n]\n");
}

} // namespace Orvelcs
