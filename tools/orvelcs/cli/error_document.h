// The JSON of what failed: the same as the line on standard error, in parts.
#pragma once

#include <string_view>

#include "orvelcs/cli/failure.h"
#include "orvelcs/cli/json.h"
#include "orvelcs/cli/output.h"

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

/// Returns what the work returns. When the work throws a Failure other than wrong usage, prints
/// `failureDocument(document, …)` where JSON is wanted and throws the Failure on. The program itself prints the error
/// document of a command that has printed nothing.
template <class Work>
auto withFailureDocument(const Json& document, Output& output, const Work& work)
{
    try {
        return work();
    } catch (const Failure& failure) {
        if (output.json() && failure.status() != ExitStatus::wrongUsage)
            output.document(failureDocument(document, output.command(), failure));
        throw;
    }
}

} // namespace Orvelcs
