// clear: no coordinate reference system for drawings.
#include <memory>

#include "coordsys/orvel_coordinate_system.h"
#include "orvelcs/drawing/change.h"

namespace Orvelcs {

namespace CoordinateSystem = Zentara::Gis::Orvel::CoordinateSystem;
namespace Library = Zentara::Infrastructure::SpatialReference;

namespace {

struct ClearOptions {
    bool asAssignment = false;
    ChangeOptions change;
};

ExitStatus runClear(ClearOptions& options, Output& output)
{
    readFileList(options.change.files);
    checkChangeOptions(options.change, output);
    Change change;
    change.apply = [&](QeDbDatabase* database, Library::Status& status) {
        using Definition = Library::CoordinateReferenceSystemDefinition;
        return options.asAssignment
                   ? CoordinateSystem::SetCoordinateSystem(static_cast<const Definition*>(nullptr), database, &status)
                   : CoordinateSystem::ClearCoordinateSystem(database);
    };
    change.done = "cleared";
    change.reason = [](Qeapp::ErrorStatus) { return std::string("the coordinate system could not be removed"); };
    return changeDrawings(options.change, change, output);
}

std::vector<Command> declareClear(CLI::App& program)
{
    auto options = std::make_shared<ClearOptions>();
    CLI::App* app = addCommand(program, {"clear",
                                         "Remove the coordinate reference system of drawings",
                                         {"clear [OPTIONS] FILE..."},
                                         "A drawing whose change fails or is vetoed is left exactly as it was."});
    addArguments(*app, "FILE", options->change.files.names, "the drawings");
    addFileListOptions(*app, options->change.files);
    app->add_flag("--as-assignment", options->asAssignment,
                  "assign no definition; reactors are notified of an assignment with an empty name");
    addChangeOptions(*app, options->change);
    return {{app, [options](Output& output) { return runClear(*options, output); }}};
}

const CommandRegistration kClearCommand({HelpGroup::drawings, 3}, declareClear);

} // namespace

} // namespace Orvelcs
