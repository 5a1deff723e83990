#include "support/scoped_registry.h"

#include "embedded/windows/registry_file.h"

namespace Tests {

ScopedRegistry::ScopedRegistry(const TemporaryFolder& folder, const std::filesystem::path& file)
    : folder_(folder.path())
{
    Embedded::useRegistryFile(file);
}

// The folder of the test removes the files.
ScopedRegistry::~ScopedRegistry()
{
    Embedded::useRegistryFile({});
}

} // namespace Tests
