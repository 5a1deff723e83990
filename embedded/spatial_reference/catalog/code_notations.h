// Ways to write a code other than AUTHORITY:CODE.
#pragma once

#include <string>
#include <string_view>

#include "platform/export.h"

namespace Embedded {

/// AUTHORITY:CODE for a name such as "urn:ogc:def:crs:EPSG::25832" or "http://www.opengis.net/def/crs/EPSG/0/25832",
/// whose version is left out; any other text unchanged.
ZSR_API std::wstring codeFromNotation(std::wstring_view text);

/// The same, and for a number alone the code of the system that has it: that of EPSG before any other, or the only one.
/// A number that no system has, or several authorities other than EPSG, stays as it is.
ZSR_API std::wstring plainCode(std::wstring_view text);

} // namespace Embedded
