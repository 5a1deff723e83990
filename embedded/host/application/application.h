// The embedded application: what a program that is itself a host sets up and drives.
#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "embedded/base/error.h"
#include "platform/export.h"
#include "platform/host/application.h"
#include "platform/host/database.h"
#include "platform/host/decomposition.h"
#include "platform/host/error_status.h"
#include "platform/host/runtime.h"

namespace Embedded {

/// Opens a document on the drawing, makes it current and its database the working one. The host owns the document and
/// the drawing until closeDocument.
QEHOST_API QeApDocument* openDocument(std::unique_ptr<QeDbDatabase> database);
/// Closes the document and destroys its drawing. When it was the current one, the document opened last among the others
/// becomes current, with its database the working one. eLockConflict for a locked document, eInvalidInput for one that
/// is not open.
QEHOST_API Qeapp::ErrorStatus closeDocument(QeApDocument* document);
/// Makes an open document current and its database the working one.
QEHOST_API Qeapp::ErrorStatus setCurrentDocument(QeApDocument* document);

/// The per-user product registry root that the application services answer; a default is set at start.
QEHOST_API void setUserRegistryProductRootKey(const std::wstring& path);

/// For tests: whether the host has application services, a decomposition manager, a document manager; and what it
/// answers in the place of its own where that is not null.
struct HostParts {
    bool applicationServices = true;
    bool decompositionManager = true;
    bool documentManager = true;
    QeDbHostApplicationServices* otherApplicationServices = nullptr;
    QeDbDecompositionManager* otherDecompositionManager = nullptr;
    QeApDocManager* otherDocumentManager = nullptr;
};
QEHOST_API void setHostParts(HostParts parts);

/// For tests: a lock that someone else holds on a document. While it lives, nobody else can lock the document.
class QEHOST_API ForeignDocumentLock {
public:
    explicit ForeignDocumentLock(QeApDocument* document);
    ~ForeignDocumentLock();
    ForeignDocumentLock(const ForeignDocumentLock&) = delete;
    ForeignDocumentLock& operator=(const ForeignDocumentLock&) = delete;

private:
    QeApDocument* document_;
};

/// The host's dynamic linker: maps the shared library, checks its entry points and API version, sends it message 1
/// and returns its handle.
/// For a module that is already loaded, returns the same handle and sends no second message.
/// eModuleNotFound when it cannot be mapped; eModuleRefused without an entry point or for another API version.
QEHOST_API Expected<void*> loadModule(const std::filesystem::path& file);
/// Sends message 2 and unmaps the module. eInvalidInput for a handle that is not loaded; eModuleRefused for a module
/// that has not unlocked itself.
QEHOST_API Qeapp::ErrorStatus unloadModule(void* handle);
/// The address of a symbol of a loaded module, or null.
QEHOST_API void* moduleSymbol(void* handle, const char* name);
QEHOST_API bool isModuleUnlocked(void* handle);
QEHOST_API bool isModuleMdiAware(void* handle);

} // namespace Embedded

namespace QeHost {

/// The parts that the host has at the moment.
Embedded::HostParts& hostParts();

} // namespace QeHost
