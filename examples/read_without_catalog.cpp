// Reads everything that a drawing stores of its coordinate system: the system, its datum, its ellipsoid. The drawing
// holds the definitions whole, so that no catalog is needed. Run it where PROJ finds none: PROJ_DATA=nowhere
// build/release/bin/example_read_without_catalog site.qedb
#include <iostream>
#include <memory>

#include "coordsys/orvel_coordinate_system.h"
#include "embedded/host/drawing_file/drawing_file.h"

namespace Cs = Zentara::Gis::Orvel::CoordinateSystem;
namespace Library = Zentara::Infrastructure::SpatialReference;

namespace {

bool printDefinitions(QeDbDatabase& drawing)
{
    Library::DefinitionBaseArray* definitions = nullptr; // a failure may leave the pointer as it was
    const Qeapp::ErrorStatus result = Cs::GetCoordinateSystem(definitions, &drawing);
    const auto destroy = [](Library::DefinitionBaseArray* array) { Library::Object::Destroy(array); };
    const std::unique_ptr<Library::DefinitionBaseArray, decltype(destroy)> owner(definitions, destroy);
    if (result != Qeapp::eOk)
        return false;
    for (int index = 0; index < definitions->GetCount(); ++index) {
        const Library::DefinitionBase* const definition = definitions->GetItem(index);
        const wchar_t* code = nullptr; // the definition lends both texts
        const wchar_t* name = nullptr;
        if (definition->GetCode(code) == Library::statusOk && definition->GetName(name) == Library::statusOk)
            std::wcout << code << L' ' << name << L'\n';
    }
    return true;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::cerr << "usage: example_read_without_catalog DRAWING\n";
        return 2;
    }
    const auto drawing = Embedded::loadDrawing(argv[1]); // the embedded host's; a product opens drawings by itself
    if (!drawing || !printDefinitions(**drawing)) {
        std::cerr << (drawing ? "the coordinate system cannot be read" : drawing.error().text()) << '\n';
        return 1;
    }
    return 0;
}
