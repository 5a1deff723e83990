// The function that rewrites a drawing's coordinate system in the forms of another drawing version.
#include "coordsys/orvel_coordinate_system.h"
#include "storage/host_holders.h"
#include "sweep/initial_states.h"
#include "sweep/scenario.h"

namespace Tests {
namespace {

constexpr auto kOlder = static_cast<QeDb::QeDbDwgVersion>(29);

/// Calls the function within a transaction, as the host's save does, so that a failure is undone. The status carries no
/// information after a failure and is not checked.
class ApplyVersion : public Call {
public:
    explicit ApplyVersion(QeDb::QeDbDwgVersion version) : version_(version) {}
    int make(Fixture& fixture) override
    {
        Orvel::Transaction transaction(fixture.database()->transactionManager());
        if (!transaction.started())
            return Qeapp::eNoTransaction;
        const Qeapp::ErrorStatus result =
            Zentara::Gis::Orvel::CoordinateSystem::ApplyCoordinateSystemStorageVersion(fixture.database(), version_);
        return result == Qeapp::eOk ? transaction.commit() : result;
    }

private:
    QeDb::QeDbDwgVersion version_;
};

Scenario applying(const std::string& name, InitialState (*initialState)(), QeDb::QeDbDwgVersion version,
                  int expected = 0)
{
    return {.function = "ApplyCoordinateSystemStorageVersion",
            .name = name,
            .initialState = initialState,
            .call = calling<ApplyVersion>(version),
            .promise = Promise::allOrNothing,
            .expected = expected};
}

} // namespace

Scenarios storageVersionScenarios()
{
    return {
        applying("empty drawing", emptyDrawing, kOlder),
        applying("older forms", drawingWithGeoData, kOlder),
        applying("older forms again", drawingWithAllForms, kOlder),
        applying("older forms of a user's own", drawingWithUsersSystem, kOlder),
        applying("newest form", drawingWithAllForms, QeDb::kCurrentDwg),
        applying("unknown legacy code", drawingWithUnknownLegacyCode, kOlder, Qeapp::eNotApplicable),
    };
}

} // namespace Tests
