#include "embedded/diagnostics/fault_injection.h"
#include "embedded/diagnostics/resource_counters.h"
#include "embedded/host/application/application.h"
#include "host/database/drawing_test.h"

namespace Tests {
namespace {

using Embedded::closeDocument;
using Embedded::openDocument;
using Embedded::setCurrentDocument;

/// Closes every document that a test opened and restores the parts of the host.
class DocumentTest : public PlatformTest {
protected:
    ~DocumentTest() override
    {
        Embedded::setHostParts({});
        while (QeApDocument* document = manager().curDocument())
            EXPECT_EQ(closeDocument(document), Qeapp::eOk);
        services().setWorkingDatabase(nullptr);
    }

    static QeApDocument* newDocument() { return openDocument(std::make_unique<QeDbDatabase>()); }
    static QeApDocManager& manager() { return *qeDocManager(); }
    static QeDbHostApplicationServices& services() { return *qedbHostApplicationServices(); }
};

TEST_F(DocumentTest, HostWithoutDocuments_HasNoWorkingDatabase)
{
    EXPECT_EQ(manager().curDocument(), nullptr);
    EXPECT_EQ(services().workingDatabase(), nullptr);
}

TEST_F(DocumentTest, NullDrawing_OpensNoDocument)
{
    EXPECT_EQ(openDocument(nullptr), nullptr);
}

TEST_F(DocumentTest, OpenedDocument_IsCurrentAndItsDrawingTheWorkingOne)
{
    newDocument();
    const QeApDocument* second = newDocument();
    EXPECT_EQ(manager().curDocument(), second);
    EXPECT_EQ(services().workingDatabase(), second->database());
}

TEST_F(DocumentTest, AnyOpenDocument_CanBeMadeCurrent)
{
    QeApDocument* first = newDocument();
    newDocument();
    EXPECT_EQ(setCurrentDocument(first), Qeapp::eOk);
    EXPECT_EQ(manager().curDocument(), first);
    EXPECT_EQ(services().workingDatabase(), first->database());
    EXPECT_EQ(setCurrentDocument(nullptr), Qeapp::eInvalidInput);
    EXPECT_EQ(manager().curDocument(), first);
}

TEST_F(DocumentTest, ClosedCurrentDocument_IsFollowedByTheOneOpenedLast)
{
    QeApDocument* first = newDocument();
    const QeApDocument* second = newDocument();
    ASSERT_EQ(setCurrentDocument(first), Qeapp::eOk);
    EXPECT_EQ(closeDocument(first), Qeapp::eOk);
    EXPECT_EQ(manager().curDocument(), second);
    EXPECT_EQ(services().workingDatabase(), second->database());
}

TEST_F(DocumentTest, ClosedOtherDocument_LeavesTheCurrentOne)
{
    QeApDocument* first = newDocument();
    const QeApDocument* second = newDocument();
    EXPECT_EQ(closeDocument(first), Qeapp::eOk);
    EXPECT_EQ(manager().curDocument(), second);
}

TEST_F(DocumentTest, ClosingTheLastDocument_LeavesNoWorkingDatabase)
{
    EXPECT_EQ(closeDocument(newDocument()), Qeapp::eOk);
    EXPECT_EQ(manager().curDocument(), nullptr);
    EXPECT_EQ(services().workingDatabase(), nullptr);
}

TEST_F(DocumentTest, ClosedDocument_IsRefused)
{
    QeApDocument* document = newDocument();
    ASSERT_EQ(closeDocument(document), Qeapp::eOk);
    EXPECT_EQ(closeDocument(document), Qeapp::eInvalidInput);
    EXPECT_EQ(manager().lockDocument(document), Qeapp::eInvalidInput);
    EXPECT_EQ(manager().unlockDocument(document), Qeapp::eInvalidInput);
}

TEST_F(DocumentTest, DestroyedDrawing_IsNoLongerTheWorkingDatabase)
{
    {
        QeDbDatabase database;
        services().setWorkingDatabase(&database);
    }
    EXPECT_EQ(services().workingDatabase(), nullptr);
}

TEST_F(DocumentTest, Locks_Nest)
{
    QeApDocument* document = newDocument();
    ASSERT_EQ(manager().lockDocument(document), Qeapp::eOk);
    ASSERT_EQ(manager().lockDocument(document, QeAp::kRead), Qeapp::eOk);
    EXPECT_EQ(document->lockMode(), QeAp::kWrite) << "the strongest of them";
    EXPECT_EQ(Embedded::ResourceCounters::now()[Embedded::ResourceKind::documentLock], 2);
    EXPECT_EQ(manager().unlockDocument(document), Qeapp::eOk);
    EXPECT_EQ(document->lockMode(), QeAp::kWrite);
    EXPECT_EQ(manager().unlockDocument(document), Qeapp::eOk);
    EXPECT_EQ(document->lockMode(), QeAp::kNotLocked);
    EXPECT_EQ(manager().unlockDocument(document), Qeapp::eNotLocked);
}

TEST_F(DocumentTest, Lock_HoldsForItsDocumentOnly)
{
    QeApDocument* first = newDocument();
    const QeApDocument* second = newDocument();
    ASSERT_EQ(manager().lockDocument(first), Qeapp::eOk);
    EXPECT_EQ(second->lockMode(), QeAp::kNotLocked);
    EXPECT_EQ(manager().unlockDocument(first), Qeapp::eOk);
}

TEST_F(DocumentTest, LockedDocument_CannotBeClosed)
{
    QeApDocument* document = newDocument();
    ASSERT_EQ(manager().lockDocument(document), Qeapp::eOk);
    EXPECT_EQ(closeDocument(document), Qeapp::eLockConflict);
    EXPECT_EQ(manager().curDocument(), document);
    EXPECT_EQ(manager().unlockDocument(document), Qeapp::eOk);
}

TEST_F(DocumentTest, ForeignLock_PreventsLockingAndClosing)
{
    QeApDocument* document = newDocument();
    {
        const Embedded::ForeignDocumentLock foreign(document);
        EXPECT_EQ(manager().lockDocument(document), Qeapp::eLockConflict);
        EXPECT_EQ(closeDocument(document), Qeapp::eLockConflict);
    }
    EXPECT_EQ(manager().lockDocument(document), Qeapp::eOk);
    EXPECT_EQ(manager().unlockDocument(document), Qeapp::eOk);
}

TEST_F(DocumentTest, NullDocumentAndInvalidLockMode_AreRefused)
{
    EXPECT_EQ(manager().lockDocument(nullptr), Qeapp::eInvalidInput);
    EXPECT_EQ(manager().unlockDocument(nullptr), Qeapp::eInvalidInput);
    QeApDocument* document = newDocument();
    EXPECT_EQ(manager().lockDocument(document, QeAp::kNone), Qeapp::eInvalidInput);
    EXPECT_EQ(manager().lockDocument(document, QeAp::kNotLocked), Qeapp::eInvalidInput);
}

TEST_F(DocumentTest, FailingLock_LocksNothing)
{
    QeApDocument* document = newDocument();
    const Embedded::ScopedFault fault({.call = "QeApDocManager::lockDocument", .code = {}});
    EXPECT_EQ(manager().lockDocument(document), Qeapp::eLockConflict);
    EXPECT_EQ(document->lockMode(), QeAp::kNotLocked);
}

TEST_F(DocumentTest, RegistryRoot_IsTheOneThatWasSet)
{
    const std::wstring before = services().getUserRegistryProductRootKey();
    EXPECT_EQ(before, L"Software\\Embedded Host\\1.0");
    Embedded::setUserRegistryProductRootKey(L"Software\\Other\\2");
    EXPECT_STREQ(services().getUserRegistryProductRootKey(), L"Software\\Other\\2");
    Embedded::setUserRegistryProductRootKey(before);
}

TEST_F(DocumentTest, PartsThatTheHostLacks_AreNull)
{
    Embedded::setHostParts({false, false, false});
    EXPECT_EQ(qedbHostApplicationServices(), nullptr);
    EXPECT_EQ(qedbGetDecompositionManager(), nullptr);
    EXPECT_EQ(qeDocManager(), nullptr);
    Embedded::setHostParts({});
    EXPECT_NE(qedbHostApplicationServices(), nullptr);
    EXPECT_NE(qedbGetDecompositionManager(), nullptr);
    EXPECT_NE(qeDocManager(), nullptr);
}

} // namespace
} // namespace Tests
