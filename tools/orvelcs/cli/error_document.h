// The JSON of what failed: the same as the line on standard error, in parts.
#pragma once

#include <string_view>

#include "orvelcs/cli/failure.h"
#include "orvelcs/cli/json.h"

namespace Orvelcs {

/// {"command", "what", "code", "name", "message"}. `code` is the result of the host or of the spatial-reference library
/// and `name` its name; both are null where none of them was asked.
Json errorAsJson(std::string_view command, std::string_view what, const std::optional<ResultCode>& code,
                 std::string_view message);
Json errorAsJson(std::string_view command, const Failure& failure);

/// The whole document of a command that failed: {"error": …}.
Json errorDocument(std::string_view command, const Failure& failure);

/// The document of a command that has a result document for failures, too. An object gets the member "error". Any other
/// is printed where nothing was found, and replaced by {"error": …} where something failed.
Json failureDocument(Json result, std::string_view command, const Failure& failure);

} // namespace Orvelcs
