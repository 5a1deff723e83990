// The function that rewrites what a drawing holds into the forms of another drawing version.
#include "coordsys/orvel_coordinate_system.h"
#include "storage/host_holders.h"
#include "sweep/initial_states.h"
#include "sweep/scenario.h"

namespace Tests {
namespace {

constexpr auto kOlder = static_cast<QeDb::QeDbDwgVersion>(29);

/// Within a transaction, as the host's save does it: a failure is undone. What the status tells after one is of no use,
/// so nothing is asked of it.
class ApplyVersion : public Call {
public:
    explicit ApplyVersion(QeDb::QeDbDwgVersion version) : version_(version) {}
    int make(Stage& stage) override
    {
        Orvel::Transaction transaction(stage.database()->transactionManager());
        if (!transaction.started())
            return Qeapp::eNoTransaction;
        const Qeapp::ErrorStatus result =
            Zentara::Gis::Orvel::CoordinateSystem::ApplyCoordinateSystemStorageVersion(stage.database(), version_);
        return result == Qeapp::eOk ? transaction.commit() : result;
    }

private:
    QeDb::QeDbDwgVersion version_;
};

Scenario applying(const std::string& name, Setting (*setting)(), QeDb::QeDbDwgVersion version, int expected = 0)
{
    return {.function = "ApplyCoordinateSystemStorageVersion",
            .name = name,
            .setting = setting,
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
