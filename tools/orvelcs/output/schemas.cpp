#include "orvelcs/output/schemas.h"

#include <algorithm>
#include <string>

namespace Orvelcs {
namespace {

constexpr std::string_view kSharedFile = "error";
constexpr std::string_view kSharedReference = "error.json#";

/// Makes the references to the shared file references to the schema itself. Returns whether there was one.
bool redirectReferences(Json& json)
{
    bool isRedirected = false;
    for (auto& [key, value] : json.items()) {
        if (key == "$ref" && value.get_ref<const std::string&>().starts_with(kSharedReference)) {
            value = "#" + value.get_ref<const std::string&>().substr(kSharedReference.size());
            isRedirected = true;
        } else if (value.is_structured()) {
            isRedirected = redirectReferences(value) || isRedirected;
        }
    }
    return isRedirected;
}

} // namespace

Json selfContained(const Schema& schema)
{
    Json json = Json::parse(schema.text);
    if (!redirectReferences(json))
        return json;
    const auto shared = std::ranges::find(schemas(), kSharedFile, &Schema::name);
    json["$defs"].update(Json::parse(shared->text)["$defs"]);
    return json;
}

} // namespace Orvelcs
