// A small host. It loads a module that was built against the platform beside this file, initialises it, calls it and
// unloads it. It prints only what failed.
#include <dlfcn.h>

#include <cstdio>

#include "coordsys/orvel_coordinate_system.h"
#include "frame/entry_point.h"
#include "stub_record.h"

namespace {

namespace Cs = Zentara::Gis::Orvel::CoordinateSystem;

using AddReactor = decltype(&Cs::AddCoordinateSystemReactor);

constexpr const char* kAddReactor = "_ZN7Zentara3Gis5Orvel16CoordinateSystem26AddCoordinateSystemReactorEPNS2_"
                                    "28OrvelCoordinateSystemReactorE";
constexpr int kInitialise = 1;
constexpr int kUnload = 2;

/// Counts failed expectations.
class Checks {
public:
    void expect(bool holds, const char* what)
    {
        if (holds)
            return;
        std::fprintf(stderr, "failed: %s\n", what);
        ++failures_;
    }
    [[nodiscard]] int failures() const { return failures_; }

private:
    int failures_ = 0;
};

template <class Function>
Function symbol(void* module, const char* name)
{
    return reinterpret_cast<Function>(dlsym(module, name));
}

void checkModule(Checks& checks, void* module)
{
    const auto version = symbol<decltype(&qerxGetApiVersion)>(module, "qerxGetApiVersion");
    const auto entryPoint = symbol<decltype(&qerxEntryPoint)>(module, "qerxEntryPoint");
    const auto addReactor = symbol<AddReactor>(module, kAddReactor);
    checks.expect(version != nullptr && entryPoint != nullptr && addReactor != nullptr, "the module has its exports");
    if (checks.failures() != 0)
        return;
    checks.expect(version() == 0x00180000, "it was built for the host API version 0x00180000");
    checks.expect(entryPoint(kInitialise, module) == 0, "message 1 returns 0");
    checks.expect(stubRecord().registered == module, "message 1 registers the module for several documents");
    checks.expect(stubRecord().unlocked == module, "message 1 unlocks the module");
    checks.expect(stubRecord().reactor != nullptr, "message 1 registers the decomposition reactor");
    checks.expect(addReactor(nullptr) == Qeapp::eInvalidInput, "a null reactor is eInvalidInput");
    checks.expect(entryPoint(kUnload, module) == 0, "message 2 returns 0");
    checks.expect(stubRecord().reactor == nullptr, "message 2 removes the decomposition reactor");
}

} // namespace

int main(int count, char** arguments)
{
    if (count != 2) {
        std::fputs("usage: porting_host MODULE\n", stderr);
        return 2;
    }
    void* const module = dlopen(arguments[1], RTLD_NOW | RTLD_LOCAL);
    if (module == nullptr) {
        std::fprintf(stderr, "%s\n", dlerror());
        return 1;
    }
    Checks checks;
    checkModule(checks, module);
    checks.expect(dlclose(module) == 0, "the module can be unmapped");
    return checks.failures() == 0 ? 0 : 1;
}
