// Ways to write a code other than AUTHORITY:CODE.
#pragma once

#include <string>
#include <string_view>

#include "platform/export.h"

namespace Embedded {

/// AUTHORITY:CODE for a name such as "urn:ogc:def:crs:EPSG::25832" or "http://www.opengis.net/def/crs/EPSG/0/25832",
/// whose version is left out; any other text unchanged.
ZSR_API std::wstring codeFromNotation(std::wstring_view text);

} // namespace Embedded
