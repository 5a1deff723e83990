// Loads the module into the host.
#pragma once

namespace Orvelcs {

/// Loads the module through the host's dynamic linker, so that it takes part in the host's saves, and unloads it at the
/// end. Throws Failure when the host refuses it.
class LoadedModule {
public:
    LoadedModule();
    LoadedModule(const LoadedModule&) = delete;
    LoadedModule& operator=(const LoadedModule&) = delete;
    ~LoadedModule();

private:
    void* handle_ = nullptr;
};

} // namespace Orvelcs
