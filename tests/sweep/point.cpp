#include "sweep/point.h"

#include <cstdlib>
#include <stdexcept>

#include "support/variables.h"

namespace Tests {
namespace {

const std::optional<std::string>& requestedPoint()
{
    static const std::optional<std::string> name = getVariable("ORVEL_SWEEP_POINT");
    return name;
}

std::string pointPrefix(const Scenario& scenario, FaultKind kind)
{
    return scenarioName(scenario) + ":" + faultKindName(kind) + ":";
}

} // namespace

std::string pointName(const Scenario& scenario, FaultKind kind, const FaultPlace& place)
{
    return pointPrefix(scenario, kind) + formatPlace(place);
}

bool isReplaying()
{
    return requestedPoint().has_value();
}

std::optional<FaultPlace> placeToReplay(const Scenario& scenario, FaultKind kind)
{
    const std::string prefix = pointPrefix(scenario, kind);
    if (!requestedPoint() || !requestedPoint()->starts_with(prefix))
        return std::nullopt;
    const std::string numbers = requestedPoint()->substr(prefix.size());
    const std::size_t comma = numbers.find(',');
    try {
        const std::size_t first = std::stoul(numbers);
        return FaultPlace{first, comma == std::string::npos ? 0 : std::stoul(numbers.substr(comma + 1))};
    } catch (const std::logic_error&) {
        throw std::runtime_error("ORVEL_SWEEP_POINT: expected function:scenario:kind:n, found " + *requestedPoint());
    }
}

} // namespace Tests
