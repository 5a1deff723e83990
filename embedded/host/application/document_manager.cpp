#include "embedded/host/application/document_manager.h"

#include <algorithm>
#include <array>
#include <utility>

#include "embedded/diagnostics/resource_counters.h"
#include "embedded/host/application/application.h"
#include "embedded/host/application/application_services.h"
#include "embedded/host/database/injected_fault.h"

using Embedded::ResourceCounters;
using Embedded::ResourceKind;

QeApDocument::~QeApDocument() = default;

QeApDocManager::~QeApDocManager() = default;

namespace QeHost {
namespace {

constexpr std::array kWeakestFirst = {QeAp::kRead, QeAp::kAutoWrite, QeAp::kWrite, QeAp::kProtectedAutoWrite};

auto strengthOf(QeAp::DocLockMode mode)
{
    return std::find(kWeakestFirst.begin(), kWeakestFirst.end(), mode);
}

bool isWeaker(QeAp::DocLockMode left, QeAp::DocLockMode right)
{
    return strengthOf(left) < strengthOf(right);
}

bool isLockMode(QeAp::DocLockMode mode)
{
    return strengthOf(mode) != kWeakestFirst.end();
}

} // namespace

QeAp::DocLockMode Document::lockMode() const
{
    return locks_.empty() ? QeAp::kNotLocked : *std::max_element(locks_.begin(), locks_.end(), isWeaker);
}

Qeapp::ErrorStatus Document::lock(QeAp::DocLockMode mode)
{
    if (foreignLock_)
        return Qeapp::eLockConflict;
    locks_.push_back(mode);
    ResourceCounters::add(ResourceKind::documentLock);
    return Qeapp::eOk;
}

Qeapp::ErrorStatus Document::unlock()
{
    if (locks_.empty())
        return Qeapp::eNotLocked;
    locks_.pop_back();
    ResourceCounters::remove(ResourceKind::documentLock);
    return Qeapp::eOk;
}

Qeapp::ErrorStatus DocumentManager::lockDocument(QeApDocument* document, QeAp::DocLockMode mode,
                                                 const wchar_t* /*globalCommandName*/,
                                                 const wchar_t* /*localCommandName*/, bool /*prompt*/)
{
    if (const auto injected = injectedFault("QeApDocManager::lockDocument", Qeapp::eLockConflict))
        return *injected;
    Document* found = find(document);
    return found != nullptr && isLockMode(mode) ? found->lock(mode) : Qeapp::eInvalidInput;
}

Qeapp::ErrorStatus DocumentManager::unlockDocument(QeApDocument* document)
{
    Document* found = find(document);
    return found != nullptr ? found->unlock() : Qeapp::eInvalidInput;
}

QeApDocument* DocumentManager::open(std::unique_ptr<QeDbDatabase> database)
{
    documents_.push_back(std::make_unique<Document>(std::move(database)));
    makeCurrent(documents_.back().get());
    return current_;
}

Qeapp::ErrorStatus DocumentManager::close(QeApDocument* document)
{
    const Document* found = find(document);
    if (found == nullptr)
        return Qeapp::eInvalidInput;
    if (found->isLocked())
        return Qeapp::eLockConflict;
    const bool wasCurrent = found == current_;
    std::erase_if(documents_, [found](const auto& candidate) { return candidate.get() == found; });
    if (wasCurrent)
        makeCurrent(documents_.empty() ? nullptr : documents_.back().get());
    return Qeapp::eOk;
}

Qeapp::ErrorStatus DocumentManager::setCurrent(QeApDocument* document)
{
    Document* found = find(document);
    if (found == nullptr)
        return Qeapp::eInvalidInput;
    makeCurrent(found);
    return Qeapp::eOk;
}

Document* DocumentManager::find(const QeApDocument* document) const
{
    const auto found = std::find_if(documents_.begin(), documents_.end(),
                                    [document](const auto& candidate) { return candidate.get() == document; });
    return found != documents_.end() ? found->get() : nullptr;
}

void DocumentManager::makeCurrent(Document* document)
{
    current_ = document;
    applicationServices().setWorkingDatabase(document != nullptr ? document->database() : nullptr);
}

DocumentManager& documentManager()
{
    static auto* const manager = new DocumentManager;
    return *manager;
}

} // namespace QeHost

QeApDocManager* qeDocManager()
{
    const Embedded::HostParts& parts = QeHost::hostParts();
    if (parts.otherDocumentManager != nullptr)
        return parts.otherDocumentManager;
    return parts.documentManager ? &QeHost::documentManager() : nullptr;
}
