#include "embedded/diagnostics/fault_injection.h"
#include "embedded/diagnostics/resource_counters.h"
#include "host/database/drawing_test.h"

namespace Tests {
namespace {

class Transaction : public DrawingTest {};

TEST_F(Transaction, EndOrAbortWithoutATransaction_IsRefused)
{
    EXPECT_EQ(transactions().endTransaction(), Qeapp::eNoTransaction);
    EXPECT_EQ(transactions().abortTransaction(), Qeapp::eNoTransaction);
    EXPECT_EQ(transactions().numActiveTransactions(), 0);
}

TEST_F(Transaction, ActiveTransactions_AreCounted)
{
    using Embedded::ResourceCounters;
    begin();
    begin();
    EXPECT_EQ(transactions().numActiveTransactions(), 2);
    EXPECT_EQ(ResourceCounters::now()[Embedded::ResourceKind::transaction], 2);
    commit();
    abort();
    EXPECT_EQ(transactions().numActiveTransactions(), 0);
}

TEST_F(Transaction, CommittedWrite_Stays)
{
    const QeDbObjectId id = addXrecord(L"key", L"before");
    begin();
    writeText(id, L"after");
    commit();
    EXPECT_EQ(contentsOf(id), "300:after");
}

TEST_F(Transaction, AbortedWrite_IsUndone)
{
    const QeDbObjectId id = addXrecord(L"key", L"before");
    begin();
    writeText(id, L"once");
    writeText(id, L"twice");
    abort();
    EXPECT_EQ(contentsOf(id), "300:before");
}

TEST_F(Transaction, AbortedWriteThroughAnEarlierOpen_IsUndone)
{
    const QeDbObjectId id = addGeoData(L"before");
    const auto writer = open<QeDbGeoData>(id, QeDb::kForWrite);
    ASSERT_EQ(writer->setCoordinateSystem(L"just before"), Qeapp::eOk);
    begin();
    ASSERT_EQ(writer->setCoordinateSystem(L"inside"), Qeapp::eOk);
    abort();
    EXPECT_STREQ(writer->coordinateSystem(), L"just before");
    EXPECT_EQ(writer->setCoordinateSystem(L"later"), Qeapp::eOk) << "and the object is still open";
}

TEST_F(Transaction, AbortedCreation_CannotBeUnerased)
{
    begin();
    const QeDbObjectId id = addXrecord(L"key");
    abort();
    EXPECT_EQ(keys(), L"");
    EXPECT_EQ(tryOpen(id, QeDb::kForRead), Qeapp::eObjectErased);
    EXPECT_EQ(tryOpen(id, QeDb::kForRead, true), Qeapp::eObjectErased);
}

TEST_F(Transaction, AbortedCreationThatIsOpen_CanOnlyBeClosed)
{
    begin();
    const QeDbObjectId id = addXrecord(L"key");
    const auto writer = open<QeDbXrecord>(id, QeDb::kForWrite);
    abort();
    EXPECT_TRUE(writer->isErased());
    EXPECT_EQ(writer->erase(false), Qeapp::eObjectErased);
}

TEST_F(Transaction, AbortedErasure_IsUndone)
{
    const QeDbObjectId id = addXrecord(L"key");
    begin();
    erase(id);
    abort();
    EXPECT_EQ(keys(), L"key");
    EXPECT_EQ(tryOpen(id, QeDb::kForRead), Qeapp::eOk);
}

TEST_F(Transaction, AbortedReplacement_RestoresTheOldEntry)
{
    const QeDbObjectId first = addXrecord(L"key", L"first");
    begin();
    addXrecord(L"key", L"second");
    abort();
    QeDbObjectId id;
    EXPECT_EQ(namedObjects()->getAt(L"key", id), Qeapp::eOk);
    EXPECT_EQ(id, first);
    EXPECT_EQ(contentsOf(first), "300:first");
    EXPECT_EQ(open(first)->ownerId(), namedObjects()->objectId());
}

TEST_F(Transaction, AbortedRemoval_RestoresTheEntry)
{
    const QeDbObjectId id = addXrecord(L"key");
    begin();
    EXPECT_EQ(namedObjects(QeDb::kForWrite)->remove(L"key"), Qeapp::eOk);
    abort();
    EXPECT_EQ(keys(), L"key");
    EXPECT_EQ(open(id)->ownerId(), namedObjects()->objectId());
}

TEST_F(Transaction, AbortedRegistration_IsUndone)
{
    begin();
    registerApplication(L"KTN");
    const ResbufChain chain(qeutBuildList(1001, L"KTN", 1000, L"code", QeRb::kListEnd));
    EXPECT_EQ(namedObjects(QeDb::kForWrite)->setXData(chain.get()), Qeapp::eOk);
    abort();
    EXPECT_FALSE(regAppTable()->has(L"KTN"));
    EXPECT_EQ(namedObjects()->xData(), nullptr);
    registerApplication(L"KTN");
    EXPECT_EQ(namedObjects()->xData(), nullptr) << "registering the name again does not restore the data";
}

TEST_F(Transaction, AbortedGeoData_CanBePostedAgain)
{
    begin();
    addGeoData();
    abort();
    QeDbObjectId id;
    EXPECT_EQ(qedbGetGeoDataObjId(&database, id), Qeapp::eKeyNotFound);
    addGeoData();
    EXPECT_EQ(qedbGetGeoDataObjId(&database, id), Qeapp::eOk);
}

TEST_F(Transaction, AbortOfTheInnerTransaction_KeepsChangesOfTheOuter)
{
    const QeDbObjectId id = addXrecord(L"key", L"before");
    begin();
    writeText(id, L"outer");
    begin();
    writeText(id, L"inner");
    abort();
    EXPECT_EQ(contentsOf(id), "300:outer");
    commit();
    EXPECT_EQ(contentsOf(id), "300:outer");
}

TEST_F(Transaction, AbortOfTheOuterTransaction_UndoesCommittedChangesOfTheInner)
{
    const QeDbObjectId id = addXrecord(L"key", L"before");
    begin();
    begin();
    writeText(id, L"inner");
    const QeDbObjectId created = addXrecord(L"new");
    commit();
    abort();
    EXPECT_EQ(contentsOf(id), "300:before");
    EXPECT_EQ(tryOpen(created, QeDb::kForRead, true), Qeapp::eObjectErased);
}

TEST_F(Transaction, AbortOfTheInnerTransaction_KeepsAnObjectOfTheOuter)
{
    begin();
    const QeDbObjectId id = addXrecord(L"key", L"outer");
    begin();
    writeText(id, L"inner");
    abort();
    EXPECT_EQ(contentsOf(id), "300:outer");
    abort();
    EXPECT_EQ(keys(), L"");
}

TEST_F(Transaction, AbortedDrawing_EqualsItsFormerState)
{
    registerApplication(L"KTN");
    const QeDbObjectId nested = addDictionary(L"nested");
    addXrecord(nested, L"inner");
    const std::string before = contents();
    begin();
    addXrecord(nested, L"inner", L"replaced");
    addGeoData(L"text");
    registerApplication(L"OTHER");
    addBlock(L"block");
    EXPECT_EQ(namedObjects(QeDb::kForWrite)->remove(nested), Qeapp::eOk);
    EXPECT_NE(contents(), before);
    abort();
    EXPECT_EQ(contents(), before);
}

TEST_F(Transaction, FailingStart_ReturnsNull)
{
    const Embedded::ScopedFault fault({.call = "QeDbTransactionManager::startTransaction", .code = {}});
    EXPECT_EQ(transactions().startTransaction(), nullptr);
    EXPECT_EQ(transactions().numActiveTransactions(), 0);
}

TEST_F(Transaction, FailingEnd_LeavesTheTransactionActive)
{
    const QeDbObjectId id = addXrecord(L"key", L"before");
    begin();
    writeText(id, L"after");
    {
        const Embedded::ScopedFault fault({.call = "QeDbTransactionManager::endTransaction", .code = {}});
        EXPECT_EQ(transactions().endTransaction(), Qeapp::eOutOfMemory);
    }
    EXPECT_EQ(transactions().numActiveTransactions(), 1);
    abort();
    EXPECT_EQ(contentsOf(id), "300:before");
}

TEST_F(Transaction, Transaction_ConcernsOneDrawingOnly)
{
    QeDbDatabase other;
    begin();
    addXrecord(L"key");
    EXPECT_EQ(other.transactionManager()->numActiveTransactions(), 0);
    EXPECT_EQ(other.transactionManager()->abortTransaction(), Qeapp::eNoTransaction);
    commit();
    EXPECT_EQ(keys(), L"key");
}

} // namespace
} // namespace Tests
