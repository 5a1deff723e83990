#include <map>
#include <string>
#include <utility>

#include "embedded/host/application/dynamic_linker.h"
#include "platform/host/runtime.h"

namespace QeHost {
namespace {

class SystemRegistry final : public QeRxDictionary {
public:
    SystemRegistry() { services_.emplace(kQeRxDynamicLinkerKey, &dynamicLinker()); }

    QeRxObject* at(const wchar_t* key) const override
    {
        const auto found = key != nullptr ? services_.find(key) : services_.end();
        return found != services_.end() ? found->second : nullptr;
    }

    QeRxObject* atPut(const wchar_t* key, QeRxObject* object) override
    {
        return key != nullptr ? std::exchange(services_[key], object) : nullptr;
    }

    QeRxObject* remove(const wchar_t* key) override
    {
        QeRxObject* removed = at(key);
        if (key != nullptr)
            services_.erase(key);
        return removed;
    }

private:
    std::map<std::wstring, QeRxObject*> services_;
};

} // namespace
} // namespace QeHost

QeRxClass* QeRxDictionary::desc()
{
    static QeRxClass descriptor(L"QeRxDictionary", QeRxObject::desc());
    return &descriptor;
}

QeRxClass* QeRxDictionary::isA() const
{
    return desc();
}

// Never destroyed: a module's static objects may still ask for it while the process ends.
QeRxDictionary* qerxSysRegistry()
{
    static auto* const registry = new QeHost::SystemRegistry;
    return registry;
}
