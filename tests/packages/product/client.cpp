// A client of a product that has installed the module. It sees the installed headers and the product's libraries only.
#include "coordsys/orvel_coordinate_system.h"
#include "coordsys/orvel_transformation_config.h"

namespace Cs = Zentara::Gis::Orvel::CoordinateSystem;

int main()
{
    Cs::OrvelCoordinateSystemReactor reactor;
    const Ptr<Cs::OrvelTransformationConfigItem> item(Cs::OrvelTransformationConfigItem::CreateInstance());
    const bool works = item.get() != nullptr && Cs::AddCoordinateSystemReactor(&reactor) == Qeapp::eOk &&
                       Cs::AddCoordinateSystemReactor(&reactor) == Qeapp::eInvalidInput &&
                       Cs::RemoveCoordinateSystemReactor(&reactor) == Qeapp::eOk;
    return works ? 0 : 1;
}
