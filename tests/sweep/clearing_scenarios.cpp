// The function that takes a drawing's coordinate system away, all of it or nothing.
#include "coordsys/orvel_coordinate_system.h"
#include "sweep/initial_states.h"
#include "sweep/scenario.h"

namespace Tests {
namespace {

class Clear : public Call {
public:
    int make(Stage& stage) override
    {
        return Zentara::Gis::Orvel::CoordinateSystem::ClearCoordinateSystem(stage.database());
    }
};

Scenario clearing(const std::string& name, std::function<Setting()> setting, int expected = 0)
{
    return {.function = "ClearCoordinateSystem",
            .name = name,
            .setting = std::move(setting),
            .call = calling<Clear>(),
            .promise = Promise::allOrNothing,
            .expected = expected};
}

} // namespace

Scenarios clearingScenarios()
{
    return {
        clearing("empty drawing", [] { return heard(emptyDrawing()); }),
        clearing("GeoData alone", [] { return heard(drawingWithGeoData()); }),
        clearing("all forms", [] { return heard(drawingWithAllForms()); }),
        clearing(
            "veto", [] { return heard(drawingWithAllForms(), Veto::everything); }, Qeapp::eVetoed),
    };
}

} // namespace Tests
