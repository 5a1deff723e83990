// Gives a drawing a coordinate system, and asks the drawing for it.
// Run it: build/release/bin/example_assign
#include <iostream>

#include "coordsys/orvel_coordinate_system.h"

namespace Cs = Zentara::Gis::Orvel::CoordinateSystem;

int main()
{
    QeDbDatabase drawing; // a product has one already
    if (Cs::SetCoordinateSystem(L"EPSG:25832", &drawing) != Qeapp::eOk)
        return 1;
    wchar_t* code = nullptr;
    if (Cs::GetCoordinateSystem(code, &drawing) != Qeapp::eOk || code == nullptr)
        return 1;
    std::wcout << L"The drawing has " << code << L".\n";
    qeutDelBuffer(code);
    return 0;
}
