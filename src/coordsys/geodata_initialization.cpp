#include "coordsys/orvel_coordinate_system.h"

namespace Zentara::Gis::Orvel::CoordinateSystem {
namespace {

/// Module-wide. Keeps its value until the module is unloaded.
bool InitializeGeodataFlag = false;

} // namespace

Qeapp::ErrorStatus GetInitializeGeodataParameters(bool& value)
{
    value = InitializeGeodataFlag;
    return Qeapp::eOk;
}

Qeapp::ErrorStatus SetInitializeGeodataParameters(bool value)
{
    InitializeGeodataFlag = value;
    return Qeapp::eOk;
}

} // namespace Zentara::Gis::Orvel::CoordinateSystem
