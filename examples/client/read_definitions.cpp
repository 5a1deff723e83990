// Reads the codes of everything that a drawing stores of its coordinate system: the system, its datum, its ellipsoid.
#include <memory>

#include "client.h"
#include "coordsys/orvel_coordinate_system.h"

namespace Cs = Zentara::Gis::Orvel::CoordinateSystem;
namespace Library = Zentara::Infrastructure::SpatialReference;

bool readCodes(QeDbDatabase* drawing, std::vector<std::wstring>& codes)
{
    Library::DefinitionBaseArray* definitions = nullptr; // a failure may leave the pointer as it was
    const Qeapp::ErrorStatus result = Cs::GetCoordinateSystem(definitions, drawing);
    const auto destroy = [](Library::DefinitionBaseArray* array) { Library::Object::Destroy(array); };
    const std::unique_ptr<Library::DefinitionBaseArray, decltype(destroy)> owner(definitions, destroy);
    if (result != Qeapp::eOk)
        return false;
    for (int index = 0; index < definitions->GetCount(); ++index) {
        const wchar_t* code = nullptr; // the array lends it, so it is copied
        if (definitions->GetItem(index)->GetCode(code) == Library::statusOk)
            codes.emplace_back(code);
    }
    return true;
}
