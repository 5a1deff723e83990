// The style sheet and the scripts of pages. The build compiles them in from the files beside this one.
#pragma once

#include <string_view>

namespace Orvelcs {

struct PageAsset {
    std::string_view text;
    std::string_view sha256; // of the text, in hexadecimal digits
};

extern const PageAsset kPageStyle;
extern const PageAsset kComparisonScript;
extern const PageAsset kSystemsScript;

} // namespace Orvelcs
