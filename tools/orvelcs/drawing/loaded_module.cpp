#include "orvelcs/drawing/loaded_module.h"

#include <filesystem>

#include "coordsys/orvel_coordinate_system.h"
#include "embedded/base/shared_library.h"
#include "embedded/host/application/application.h"
#include "embedded/host/database/host_error.h"
#include "orvelcs/cli/failure.h"
#include "orvelcs/output/result_names.h"

namespace Orvelcs {
namespace {

// The program is linked with the module, which is therefore mapped already: the host is to load that very file.
std::filesystem::path moduleFile()
{
    const auto* address = reinterpret_cast<const void*>(&Zentara::Gis::Orvel::CoordinateSystem::ClearCoordinateSystem);
    std::filesystem::path file = Embedded::libraryFileAt(address);
    if (file.empty())
        throw Failure("module", "cannot be found");
    return file;
}

} // namespace

LoadedModule::LoadedModule()
{
    const Embedded::Expected<void*> handle = Embedded::loadModule(moduleFile());
    if (!handle)
        throw Failure("module", resultName(Embedded::hostStatus(handle.error())) + ": " + handle.error().text());
    handle_ = *handle;
}

LoadedModule::~LoadedModule()
{
    static_cast<void>(Embedded::unloadModule(handle_)); // the program ends, and the host with it
}

} // namespace Orvelcs
