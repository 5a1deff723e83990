// Opens a document of the host for the length of a scope and makes it current.
#pragma once

#include <gtest/gtest.h>

#include <memory>

#include "embedded/host/application/application.h"

namespace Tests {

class ScopedDocument {
public:
    explicit ScopedDocument(std::unique_ptr<QeDbDatabase> database = std::make_unique<QeDbDatabase>())
        : document_(Embedded::openDocument(std::move(database)))
    {
    }
    ~ScopedDocument() { EXPECT_EQ(Embedded::closeDocument(document_), Qeapp::eOk); }
    ScopedDocument(const ScopedDocument&) = delete;
    ScopedDocument& operator=(const ScopedDocument&) = delete;

    QeApDocument* get() const { return document_; }
    QeDbDatabase* database() const { return document_->database(); }

private:
    QeApDocument* document_;
};

/// Removes or replaces parts of the host for the length of a scope.
class ScopedHostParts {
public:
    explicit ScopedHostParts(Embedded::HostParts parts) { Embedded::setHostParts(parts); }
    ~ScopedHostParts() { Embedded::setHostParts({}); }
    ScopedHostParts(const ScopedHostParts&) = delete;
    ScopedHostParts& operator=(const ScopedHostParts&) = delete;
};

} // namespace Tests
