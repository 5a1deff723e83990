// Where a text of a coordinate reference system is wrong.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace Embedded {

/// "line 3, column 12: " of the byte at `offset`, both from 1. Columns count characters.
std::string placeInText(std::string_view utf8, std::size_t offset);

/// The first fault in the punctuation of a well-known text, after its place: a bracket or a quotation mark without its
/// counterpart, or a text in quotation marks with no comma or bracket behind it. Nothing when there is none.
std::optional<std::string> findSyntaxFault(std::string_view wkt);

/// PROJ's reason for refusing a text, after the place in the text where the reason names or shows one.
std::string describeWithPlace(std::string_view utf8, std::string reason);

} // namespace Embedded
