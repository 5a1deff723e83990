// Systems that a user describes in a text of their own.
#pragma once

#include <string_view>

#include "embedded/base/error.h"
#include "embedded/spatial_reference/projjson/projjson.h"
#include "platform/export.h"

namespace Embedded {

/// The PROJJSON of the system that the text describes in WKT 1, WKT 2, PROJJSON or as a PROJ string. An identifier in
/// the text stays only when it is `code`. The Error has statusUnreadable and says what is wrong with the text.
Expected<Projjson> parseUserText(std::string_view utf8, std::string_view code);

/// Checks whether parseUserText reads the text, under whatever code.
ZSR_API Expected<void> checkUserText(std::string_view utf8);

} // namespace Embedded
