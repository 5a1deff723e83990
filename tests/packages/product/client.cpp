// A client of a product that has installed the module. It sees the installed headers and the product's libraries only.
#include "coordsys/orvel_coordinate_system.h"
#include "coordsys/orvel_transformation_config.h"

namespace Cs = Zentara::Gis::Orvel::CoordinateSystem;

int main()
{
    Cs::OrvelCoordinateSystemReactor reactor;
    const bool works = Cs::AddCoordinateSystemReactor(&reactor) == Qeapp::eOk &&
                       Cs::AddCoordinateSystemReactor(&reactor) == Qeapp::eInvalidInput &&
                       Cs::RemoveCoordinateSystemReactor(&reactor) == Qeapp::eOk &&
                       Cs::GetCsConfiguredTransformationInfo(L"A", nullptr) == nullptr;
    return works ? 0 : 1;
}
