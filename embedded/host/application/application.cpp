#include "embedded/host/application/application.h"

#include "embedded/host/application/application_services.h"
#include "embedded/host/application/document_manager.h"
#include "embedded/host/application/dynamic_linker.h"

Embedded::HostParts& QeHost::hostParts()
{
    static Embedded::HostParts parts;
    return parts;
}

namespace Embedded {

QeApDocument* openDocument(std::unique_ptr<QeDbDatabase> database)
{
    return database != nullptr ? QeHost::documentManager().open(std::move(database)) : nullptr;
}

Qeapp::ErrorStatus closeDocument(QeApDocument* document)
{
    return QeHost::documentManager().close(document);
}

Qeapp::ErrorStatus setCurrentDocument(QeApDocument* document)
{
    return QeHost::documentManager().setCurrent(document);
}

void setUserRegistryProductRootKey(const std::wstring& path)
{
    QeHost::applicationServices().setRegistryRoot(path);
}

void setHostParts(HostParts parts)
{
    QeHost::hostParts() = parts;
}

ForeignDocumentLock::ForeignDocumentLock(QeApDocument* document) : document_(document)
{
    if (QeHost::Document* found = QeHost::documentManager().find(document_))
        found->setForeignLock(true);
}

ForeignDocumentLock::~ForeignDocumentLock()
{
    if (QeHost::Document* found = QeHost::documentManager().find(document_))
        found->setForeignLock(false);
}

Expected<void*> loadModule(const std::filesystem::path& file)
{
    return QeHost::dynamicLinker().load(file);
}

Qeapp::ErrorStatus unloadModule(void* handle)
{
    return QeHost::dynamicLinker().unload(handle);
}

void* moduleSymbol(void* handle, const char* name)
{
    const QeHost::Module* module = QeHost::dynamicLinker().find(handle);
    return module != nullptr && name != nullptr ? module->library.symbol(name) : nullptr;
}

bool isModuleUnlocked(void* handle)
{
    const QeHost::Module* module = QeHost::dynamicLinker().find(handle);
    return module != nullptr && module->unlocked;
}

bool isModuleMdiAware(void* handle)
{
    const QeHost::Module* module = QeHost::dynamicLinker().find(handle);
    return module != nullptr && module->mdiAware;
}

} // namespace Embedded
