#include "support/scoped_registry.h"

#include <windows.h>

#include <cstdlib>

#include "embedded/windows/registry_file.h"

namespace Tests {

ScopedRegistry::ScopedRegistry(const TemporaryFolder& folder, const std::filesystem::path& file)
    : folder_(folder.path())
{
    Embedded::useRegistryFile(file);
    if (!Embedded::checkRegistryFile())
        std::abort(); // the test would write into the user's own
}

// The keys are not in the folder that they are named after, and stay without this.
ScopedRegistry::~ScopedRegistry()
{
    const std::wstring folder = folder_.lexically_normal().make_preferred().wstring();
    Embedded::useRegistryFile({});
    static_cast<void>(RegDeleteTreeW(
        HKEY_CURRENT_USER,
        (L"Software\\OrvelCoordsysCore\\Registries\\" + folder).c_str())); // one that stays is no failure of the test
}

} // namespace Tests
