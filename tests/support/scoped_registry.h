// A registry of the test's own, gone at the end of the scope.
#pragma once

#include <filesystem>

#include "support/temporary_folder.h"

namespace Tests {

class ScopedRegistry {
public:
    /// The file is somewhere in that folder; all registries in it are gone then.
    ScopedRegistry(const TemporaryFolder& folder, const std::filesystem::path& file);
    ScopedRegistry(const ScopedRegistry&) = delete;
    ScopedRegistry& operator=(const ScopedRegistry&) = delete;
    ~ScopedRegistry();

private:
    std::filesystem::path folder_;
};

} // namespace Tests
