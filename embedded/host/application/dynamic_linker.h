// The modules that the host has loaded; made at first use and never destroyed.
#pragma once

#include <memory>
#include <vector>

#include "embedded/base/shared_library.h"
#include "embedded/host/application/application.h"
#include "platform/host/runtime.h"

namespace QeHost {

/// What an application handle points at.
struct Module {
    Embedded::SharedLibrary library;
    bool unlocked = false;
    bool mdiAware = false;
};

class DynamicLinker final : public QeRxDynamicLinker {
public:
    bool unlockApplication(void* appHandle) override;

    Embedded::Expected<void*> load(const std::filesystem::path& file);
    Qeapp::ErrorStatus unload(void* handle);
    /// Null for a handle that is not loaded.
    Module* find(const void* handle) const;

private:
    Embedded::Expected<void*> start(const std::filesystem::path& file, Embedded::SharedLibrary library);
    Module* findSame(const Embedded::SharedLibrary& library) const;
    void remove(const Module* module);

    std::vector<std::unique_ptr<Module>> modules_;
};

DynamicLinker& dynamicLinker();

} // namespace QeHost
