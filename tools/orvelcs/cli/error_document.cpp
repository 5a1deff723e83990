#include "orvelcs/cli/error_document.h"

#include <utility>

namespace Orvelcs {

Json errorAsJson(std::string_view command, std::string_view what, const std::optional<ResultCode>& code,
                 std::string_view message)
{
    return {{"command", command},
            {"what", what},
            {"code", code ? Json(code->number) : Json(nullptr)},
            {"name", code ? Json(code->name) : Json(nullptr)},
            {"message", message}};
}

Json errorAsJson(std::string_view command, const Failure& failure)
{
    return errorAsJson(command, failure.subject(), failure.code(), failure.what());
}

Json errorDocument(std::string_view command, const Failure& failure)
{
    return {{"error", errorAsJson(command, failure)}};
}

Json failureDocument(Json result, std::string_view command, const Failure& failure)
{
    if (result.is_object()) {
        result["error"] = errorAsJson(command, failure);
        return result;
    }
    return failure.status() == ExitStatus::nothingFound ? std::move(result) : errorDocument(command, failure);
}

} // namespace Orvelcs
