// Gives a drawing a coordinate system.
#include "client.h"
#include "coordsys/orvel_coordinate_system.h"

namespace Cs = Zentara::Gis::Orvel::CoordinateSystem;

bool putOnTheEarth(QeDbDatabase* drawing)
{
    return Cs::SetCoordinateSystem(L"EPSG:25832", drawing) == Qeapp::eOk;
}
