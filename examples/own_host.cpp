// A host of one's own: a program that is not linked with the module, loads it at run time, finds one of its functions
// by name, gives a drawing a coordinate system, and unloads the module. Run it: build/release/bin/example_own_host
// build/release/bin/OrvelCoordsysCore.so
#include <iostream>
#include <memory>

#include "embedded/host/application/application.h"
#include "platform/spatial_reference.h"

namespace {

using Zentara::Infrastructure::SpatialReference::Status;

// SetCoordinateSystem by code. The name has the types of the parameters in it, so it differs from product to product:
// `nm -D --defined-only` prints it.
using SetCoordinateSystem = Qeapp::ErrorStatus (*)(const wchar_t* code, QeDbDatabase* drawing, Status* status);
constexpr const char* kSetCoordinateSystem = "_ZN7Zentara3Gis5Orvel16CoordinateSystem19SetCoordinateSystemEPKw"
                                             "P12QeDbDatabasePNS_14Infrastructure16SpatialReference6StatusE";

bool assignThrough(void* module)
{
    const auto assign = reinterpret_cast<SetCoordinateSystem>(Embedded::moduleSymbol(module, kSetCoordinateSystem));
    if (assign == nullptr)
        return false;
    QeApDocument* const document = Embedded::openDocument(std::make_unique<QeDbDatabase>());
    const Qeapp::ErrorStatus result = assign(L"EPSG:25832", nullptr, nullptr); // a null drawing is the working one
    std::cout << "SetCoordinateSystem returned " << result << ".\n";
    return Embedded::closeDocument(document) == Qeapp::eOk && result == Qeapp::eOk;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::cerr << "usage: example_own_host MODULE\n";
        return 2;
    }
    const auto module = Embedded::loadModule(argv[1]); // which calls its entry point
    if (!module) {
        std::cerr << module.error().text() << '\n';
        return 1;
    }
    std::cout << "The module is loaded" << (Embedded::isModuleUnlocked(*module) ? ", and may be unloaded.\n" : ".\n");
    const bool isAssigned = assignThrough(*module);
    if (Embedded::unloadModule(*module) != Qeapp::eOk)
        return 1;
    std::cout << "The module is unloaded.\n";
    return isAssigned ? 0 : 1;
}
