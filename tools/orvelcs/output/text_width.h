// How much room a text takes in a picture.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Orvelcs {

/// The font of pictures. What a reader's machine has of it is not known.
inline constexpr const char* kFontStack = "'DejaVu Sans',Verdana,'Segoe UI',Helvetica,Arial,sans-serif";

/// The width in the widest of these fonts, which narrower ones do not fill.
double textWidth(std::string_view utf8, double fontSize);

/// The text in lines of at most that width, broken at blanks, or inside words that are longer. What does not fit into
/// `mostLines` ends with "…".
std::vector<std::string> fitIntoLines(std::string_view utf8, double fontSize, double width, std::size_t mostLines);

} // namespace Orvelcs
