// Gives a test its own registry and removes it at the end of the scope.
#pragma once

#include <filesystem>

#include "support/temporary_folder.h"

namespace Tests {

class ScopedRegistry {
public:
    /// `file` lies below `folder`. The end of the scope removes all registries in the folder.
    ScopedRegistry(const TemporaryFolder& folder, const std::filesystem::path& file);
    ScopedRegistry(const ScopedRegistry&) = delete;
    ScopedRegistry& operator=(const ScopedRegistry&) = delete;
    ~ScopedRegistry();

private:
    std::filesystem::path folder_;
};

} // namespace Tests
