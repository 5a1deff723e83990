#include "embedded/host/application/dynamic_linker.h"

#include <algorithm>
#include <sstream>

#include "embedded/base/path.h"
#include "embedded/host/database/injected_fault.h"

namespace QeHost {

using Embedded::SharedLibrary;

namespace {

using EntryPoint = int (*)(int, void*);
using ApiVersion = int (*)();

constexpr const char* kEntryPointName = "qerxEntryPoint";
constexpr const char* kApiVersionName = "qerxGetApiVersion";

template <class Function>
Function functionOf(const SharedLibrary& library, const char* name)
{
    return reinterpret_cast<Function>(library.symbol(name));
}

tl::unexpected<Embedded::Error> refused(const std::filesystem::path& file, std::string reason)
{
    return Embedded::failure(Qeapp::eModuleRefused, std::move(reason), Embedded::displayName(file));
}

std::string hexadecimal(int number)
{
    std::ostringstream text;
    text << std::hex << std::showbase << number;
    return text.str();
}

/// Fails unless the library can be a module of this host.
Embedded::Expected<void> requireModule(const SharedLibrary& library, const std::filesystem::path& file)
{
    for (const char* name : {kApiVersionName, kEntryPointName}) {
        if (library.symbol(name) == nullptr)
            return refused(file, std::string("it does not export ") + name + ", so it is not a module");
    }
    const int version = functionOf<ApiVersion>(library, kApiVersionName)();
    if (version != kQeRxApiVersion)
        return refused(file, "it was built for host API version " + hexadecimal(version) + ", this host has " +
                                 hexadecimal(kQeRxApiVersion));
    return {};
}

int send(Module& module, QeRx::AppMsgCode message)
{
    return functionOf<EntryPoint>(module.library, kEntryPointName)(message, &module);
}

} // namespace

bool DynamicLinker::unlockApplication(void* appHandle)
{
    Module* module = find(appHandle);
    if (isFaultInjected("QeRxDynamicLinker::unlockApplication") || module == nullptr)
        return false;
    module->unlocked = true;
    return true;
}

Embedded::Expected<void*> DynamicLinker::load(const std::filesystem::path& file)
{
    Embedded::Expected<SharedLibrary> library = SharedLibrary::open(file);
    if (!library)
        return Embedded::failure(Qeapp::eModuleNotFound, "the module cannot be loaded: " + library.error().text());
    if (Module* loaded = findSame(*library))
        return loaded;
    if (Embedded::Expected<void> result = requireModule(*library, file); !result)
        return Embedded::failure(std::move(result).error());
    return start(file, *std::move(library));
}

Embedded::Expected<void*> DynamicLinker::start(const std::filesystem::path& file, SharedLibrary library)
{
    modules_.push_back(std::make_unique<Module>(Module{std::move(library), false, false}));
    Module& module = *modules_.back();
    const int answer = send(module, QeRx::kInitAppMsg);
    if (answer == QeRx::kRetOK)
        return &module;
    remove(&module);
    return refused(file, "its initialisation answered " + std::to_string(answer));
}

Qeapp::ErrorStatus DynamicLinker::unload(void* handle)
{
    Module* module = find(handle);
    if (module == nullptr)
        return Qeapp::eInvalidInput;
    if (!module->unlocked || send(*module, QeRx::kUnloadAppMsg) != QeRx::kRetOK)
        return Qeapp::eModuleRefused;
    remove(module);
    return Qeapp::eOk;
}

Module* DynamicLinker::find(const void* handle) const
{
    const auto found =
        std::find_if(modules_.begin(), modules_.end(), [handle](const auto& module) { return module.get() == handle; });
    return found != modules_.end() ? found->get() : nullptr;
}

Module* DynamicLinker::findSame(const SharedLibrary& library) const
{
    const auto found = std::find_if(modules_.begin(), modules_.end(),
                                    [&](const auto& module) { return module->library.isSameAs(library); });
    return found != modules_.end() ? found->get() : nullptr;
}

void DynamicLinker::remove(const Module* module)
{
    std::erase_if(modules_, [module](const auto& candidate) { return candidate.get() == module; });
}

DynamicLinker& dynamicLinker()
{
    static auto* const linker = new DynamicLinker;
    return *linker;
}

} // namespace QeHost

QeRxClass* QeRxDynamicLinker::desc()
{
    static QeRxClass descriptor(L"QeRxDynamicLinker", QeRxObject::desc());
    return &descriptor;
}

QeRxClass* QeRxDynamicLinker::isA() const
{
    return desc();
}

bool qerxRegisterAppMDIAware(void* appHandle)
{
    QeHost::Module* module = QeHost::dynamicLinker().find(appHandle);
    if (QeHost::isFaultInjected("qerxRegisterAppMDIAware") || module == nullptr)
        return false;
    module->mdiAware = true;
    return true;
}
