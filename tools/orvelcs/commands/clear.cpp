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
    CLI::App* app = addCommand(
        program,
        {"clear",
         "Remove the coordinate reference system of drawings",
         {"clear [OPTIONS] FILE..."},
         "The system is removed in all its stored forms. Clearing a drawing without a system succeeds. A drawing "
         "whose change fails or is vetoed is left exactly as it was.\n\n"
         "With --as-assignment the resulting drawing is the same, but reactors are also notified of an assignment "
         "with an empty name, before and after the removal. --events, --veto and the JSON document are those of "
         "assign.",
         {{"Remove the system of a drawing", "orvelcs clear plan.qedb"},
          {"Look at the notices, and change nothing", "orvelcs clear --events --veto removal plan.qedb",
           ExitStatus::failed}}});
    addArguments(*app, "FILE", options->change.files.names, "the drawings");
    addFileListOptions(*app, options->change.files);
    app->add_flag("--as-assignment", options->asAssignment, "assign no definition instead");
    addChangeOptions(*app, options->change);
    return {{app, [options](Output& output) { return runClear(*options, output); }}};
}

const CommandRegistration kClearCommand({HelpGroup::drawings, 3}, declareClear);

} // namespace

} // namespace Orvelcs
