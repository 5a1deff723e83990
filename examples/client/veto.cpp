// A reactor that allows only systems of EPSG.
#include <cwchar>

#include "client.h"
#include "coordsys/orvel_coordinate_system.h"

namespace Cs = Zentara::Gis::Orvel::CoordinateSystem;

namespace {

class EpsgOnly : public Cs::OrvelCoordinateSystemReactor {
    bool CoordinateSystemWillChange(QeDbDatabase*, const wchar_t* const name) override
    {
        return name == nullptr || std::wcsncmp(name, L"EPSG:", 5) == 0; // null is a removal, as before an assignment
    }
};

EpsgOnly epsgOnly; // exists as long as this client is loaded

} // namespace

// Called when the host has loaded this client.
bool allowOnlyEpsg()
{
    return Cs::AddCoordinateSystemReactor(&epsgOnly) == Qeapp::eOk;
}

// Called before the host unloads this client.
bool allowEverything()
{
    return Cs::RemoveCoordinateSystemReactor(&epsgOnly) == Qeapp::eOk;
}
