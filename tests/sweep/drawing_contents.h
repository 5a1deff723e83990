// What a drawing holds, without the handles by which it holds it: the same content may have been written again.
#pragma once

#include <map>
#include <string>

namespace Tests {

/// The objects that can be reached, by the way that leads to them, with no handle in them; without empty dictionaries.
using ObjectsByWay = std::map<std::string, std::string>;

/// Of the text that `contentsOf` makes of a drawing.
ObjectsByWay objectsByWay(const std::string& contents);

} // namespace Tests
