// Systems that a user describes in a text of their own.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "embedded/spatial_reference/projjson/projjson.h"
#include "platform/export.h"

namespace Embedded {

/// The document that WKT 1, WKT 2, PROJJSON or a PROJ string describes; nothing when the text is none of them or
/// describes something else than a system of this library. An identifier in the text stays only when it is `code`.
std::optional<Projjson> documentFromUserText(std::string_view utf8, std::string_view code);

/// For a text that gives no document: what is wrong with it beyond that, where this is known.
ZSR_API std::optional<std::string> whyNoDocument(std::string_view utf8);

} // namespace Embedded
