// The function that removes a drawing's coordinate system, completely or not at all.
#include "coordsys/orvel_coordinate_system.h"
#include "sweep/initial_states.h"
#include "sweep/scenario.h"

namespace Tests {
namespace {

class Clear : public Call {
public:
    int make(Fixture& fixture) override
    {
        return Zentara::Gis::Orvel::CoordinateSystem::ClearCoordinateSystem(fixture.database());
    }
};

Scenario clearing(const std::string& name, std::function<InitialState()> initialState, int expected = 0)
{
    return {.function = "ClearCoordinateSystem",
            .name = name,
            .initialState = std::move(initialState),
            .call = calling<Clear>(),
            .promise = Promise::allOrNothing,
            .expected = expected};
}

} // namespace

Scenarios clearingScenarios()
{
    return {
        clearing("empty drawing", [] { return withReactor(emptyDrawing()); }),
        clearing("GeoData alone", [] { return withReactor(drawingWithGeoData()); }),
        clearing("all forms", [] { return withReactor(drawingWithAllForms()); }),
        clearing(
            "veto", [] { return withReactor(drawingWithAllForms(), Veto::everything); }, Qeapp::eVetoed),
    };
}

} // namespace Tests
