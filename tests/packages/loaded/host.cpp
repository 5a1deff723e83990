// A host that loads the module by its plain name and then a client that is linked with it. The process must have one
// module: what the host changes through its own is heard by the client.
#include <dlfcn.h>

#include <iostream>

#include "coordsys/orvel_coordinate_system.h"

namespace {

template <class Function>
Function* find(void* library, const char* name)
{
    return reinterpret_cast<Function*>(dlsym(library, name));
}

constexpr const char* kClear = "_ZN7Zentara3Gis5Orvel16CoordinateSystem21ClearCoordinateSystemEP12QeDbDatabase";

} // namespace

int main(int count, char** arguments)
{
    if (count == 3 && dlopen(arguments[1], RTLD_NOW | RTLD_NOLOAD) != nullptr) {
        std::cerr << "expected a host that is not linked with the module, found the module loaded already\n";
        return 2;
    }
    void* const module = count == 3 ? dlopen(arguments[1], RTLD_NOW | RTLD_LOCAL) : nullptr;
    void* const client = module != nullptr ? dlopen(arguments[2], RTLD_NOW | RTLD_LOCAL) : nullptr;
    if (client == nullptr) {
        std::cerr << "expected a module and a client, found: " << (count == 3 ? dlerror() : "no two arguments") << '\n';
        return 2;
    }
    const auto clear = find<Qeapp::ErrorStatus(QeDbDatabase*)>(module, kClear);
    const auto starts = find<bool()>(client, "clientStarts");
    const auto ends = find<int()>(client, "clientEnds");
    if (clear == nullptr || starts == nullptr || ends == nullptr || !starts())
        return 2;
    QeDbDatabase drawing;
    const bool cleared = clear(&drawing) == Qeapp::eOk;
    const int changes = ends();
    if (cleared && changes == 1)
        return 0;
    std::cerr << "expected the client to hear of 1 change, it heard of " << changes << '\n';
    return 1;
}
