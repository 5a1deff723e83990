// The names and limits of the drawing file format; see docs/formats/drawing-file.md.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>
#include <variant>

#include "embedded/host/drawing_image.h"

namespace Embedded::DrawingFormat {

inline constexpr std::string_view kName = "embedded host drawing";
inline constexpr int kVersion = 1;
inline constexpr std::size_t kDeepestNesting = 64;
inline constexpr std::size_t kLongestNumber =
    1024; // in characters before the exponent; 17 digits give any real exactly

/// In the order of the alternatives of ObjectImage::contents.
inline constexpr std::array<std::string_view, std::variant_size_v<decltype(ObjectImage::contents)>> kClassNames = {
    "QeDbDictionary", "QeDbXrecord",          "QeDbRegAppTable", "QeDbRegAppTableRecord",
    "QeDbBlockTable", "QeDbBlockTableRecord", "QeDbGeoData"};

} // namespace Embedded::DrawingFormat
