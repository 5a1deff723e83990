// Systems that a user describes in a text of their own.
#pragma once

#include <string>
#include <string_view>

#include "embedded/base/error.h"
#include "embedded/spatial_reference/projjson/projjson.h"
#include "platform/export.h"

namespace Embedded {

/// The PROJJSON of the system that the text describes in WKT 1, WKT 2, PROJJSON or as a PROJ string. An identifier in
/// the text stays only when it is `code`. The Error has statusUnreadable and says what is wrong with the text and,
/// where it is known, on which line and in which column.
Expected<Projjson> parseUserText(std::string_view utf8, std::string_view code);

/// The identifier AUTHORITY:CODE that the text gives its system; empty when it gives none. The Error is that of
/// parseUserText.
ZSR_API Expected<std::string> userTextCode(std::string_view utf8);

/// Checks whether parseUserText reads the text, under whatever code.
ZSR_API Expected<void> checkUserText(std::string_view utf8);

} // namespace Embedded
