// The open documents and their locks; made at first use and never destroyed.
#pragma once

#include <memory>
#include <vector>

#include "platform/host/application.h"
#include "platform/host/database.h"

namespace QeHost {

class Document final : public QeApDocument {
public:
    explicit Document(std::unique_ptr<QeDbDatabase> database) : database_(std::move(database)) {}

    QeDbDatabase* database() const override { return database_.get(); }
    QeAp::DocLockMode lockMode() const override;

    Qeapp::ErrorStatus lock(QeAp::DocLockMode mode);
    Qeapp::ErrorStatus unlock();
    /// A lock of someone else's, for as long as it is set.
    void setForeignLock(bool locked) { foreignLock_ = locked; }
    bool isLocked() const { return foreignLock_ || !locks_.empty(); }

private:
    std::unique_ptr<QeDbDatabase> database_;
    std::vector<QeAp::DocLockMode> locks_;
    bool foreignLock_ = false;
};

class DocumentManager final : public QeApDocManager {
public:
    QeApDocument* curDocument() const override { return current_; }
    Qeapp::ErrorStatus lockDocument(QeApDocument* document, QeAp::DocLockMode mode, const wchar_t* globalCommandName,
                                    const wchar_t* localCommandName, bool prompt) override;
    Qeapp::ErrorStatus unlockDocument(QeApDocument* document) override;

    QeApDocument* open(std::unique_ptr<QeDbDatabase> database);
    Qeapp::ErrorStatus close(QeApDocument* document);
    Qeapp::ErrorStatus setCurrent(QeApDocument* document);
    /// Null for a document that is not open.
    Document* find(const QeApDocument* document) const;

private:
    void makeCurrent(Document* document);

    std::vector<std::unique_ptr<Document>> documents_; // in the order of opening
    Document* current_ = nullptr;
};

DocumentManager& documentManager();

} // namespace QeHost
