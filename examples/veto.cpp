// A reactor that allows only systems of EPSG. An assignment that it vetoes leaves the drawing as it was.
// Run it: build/release/bin/example_veto
#include <cwchar>
#include <iostream>

#include "coordsys/orvel_coordinate_system.h"

namespace Cs = Zentara::Gis::Orvel::CoordinateSystem;

namespace {

class EpsgOnly : public Cs::OrvelCoordinateSystemReactor {
    bool CoordinateSystemWillChange(QeDbDatabase*, const wchar_t* const name) override
    {
        return name == nullptr || std::wcsncmp(name, L"EPSG:", 5) == 0; // null is a removal, as before an assignment
    }
};

void assign(const wchar_t* code, QeDbDatabase& drawing)
{
    const Qeapp::ErrorStatus result = Cs::SetCoordinateSystem(code, &drawing);
    std::wcout << code
               << (result == Qeapp::eOk       ? L": assigned\n"
                   : result == Qeapp::eVetoed ? L": vetoed\n"
                                              : L": failed\n");
}

} // namespace

int main()
{
    QeDbDatabase drawing;
    EpsgOnly epsgOnly;
    if (Cs::AddCoordinateSystemReactor(&epsgOnly) != Qeapp::eOk)
        return 1;
    assign(L"LOCAL:METRE", drawing);
    assign(L"EPSG:2263", drawing);
    if (Cs::RemoveCoordinateSystemReactor(&epsgOnly) != Qeapp::eOk) // before the reactor is destroyed
        return 1;
    assign(L"LOCAL:METRE", drawing);
    return 0;
}
