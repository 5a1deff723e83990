// A lock that someone else holds on a document, for trying what happens when it is in the way.
#pragma once

#include "platform/export.h"
#include "platform/host/application.h"

namespace Embedded {

/// While it lives, nobody else can lock the document.
class QEHOST_API ForeignDocumentLock {
public:
    explicit ForeignDocumentLock(QeApDocument* document);
    ~ForeignDocumentLock();
    ForeignDocumentLock(const ForeignDocumentLock&) = delete;
    ForeignDocumentLock& operator=(const ForeignDocumentLock&) = delete;

private:
    QeApDocument* document_;
};

} // namespace Embedded
