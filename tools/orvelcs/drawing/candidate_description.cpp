#include "orvelcs/drawing/candidate_description.h"

#include <fmt/format.h>

#include "orvelcs/cli/display_text.h"
#include "orvelcs/output/operation_description.h"

namespace Orvelcs {
namespace {

Json coverageAsJson(Coverage coverage)
{
    switch (coverage) {
    case Coverage::all:
        return "all";
    case Coverage::part:
        return "part";
    case Coverage::none:
        return "none";
    case Coverage::unknown:
        break;
    }
    return nullptr;
}

} // namespace

std::string describeCandidate(const Candidate& candidate)
{
    const std::string name = oneLine(candidate.operation.name);
    return candidate.hasCode() ? fmt::format("{} ({})", oneLine(candidate.operation.code), name) : name;
}

std::string coverageText(Coverage coverage)
{
    switch (coverage) {
    case Coverage::all:
        return "covers the place";
    case Coverage::part:
        return "covers a part";
    case Coverage::none:
        return "outside";
    case Coverage::unknown:
        break;
    }
    return "area unknown";
}

Json candidateAsJson(const Candidate& candidate)
{
    Json json = catalogOperationAsJson(candidate.operation);
    json["number"] = candidate.number;
    json["usable"] = candidate.isUsable;
    json["reason"] = candidate.reason.empty() ? Json(nullptr) : Json(candidate.reason);
    json["ballpark"] = candidate.operation.isBallpark;
    json["covers"] = coverageAsJson(candidate.coverage);
    json["storable"] = candidate.isStorable();
    json["distance"] = jsonValue(candidate.distance);
    return json;
}

Json pointAsJson(const Embedded::GeographicPoint& point)
{
    return {point.latitude, point.longitude};
}

} // namespace Orvelcs
