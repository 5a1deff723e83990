// An object that was removed from the drawing exists for as long as a client can still reach it.
#include "embedded/diagnostics/resource_counters.h"
#include "embedded/host/database/database.h"
#include "host/database/drawing_test.h"

namespace Tests {
namespace {

class UnreachableObject : public DrawingTest {
protected:
    /// The number of objects, erased and removed ones included, beyond those of an empty drawing.
    long countObjects() const { return static_cast<long>(database.imp().objectRecords.size()) - inEmptyDrawing_; }
    void replace(const wchar_t* key) { static_cast<void>(addXrecord(key, L"another")); } // the id would keep it
    void remove(const wchar_t* key) { EXPECT_EQ(namedObjects(QeDb::kForWrite)->remove(key), Qeapp::eOk); }

private:
    long inEmptyDrawing_ = static_cast<long>(database.imp().objectRecords.size());
};

TEST_F(UnreachableObject, ReplacedOrRemovedObjectWithoutAnId_IsDestroyed)
{
    replace(L"key");
    replace(L"key");
    EXPECT_EQ(countObjects(), 1);
    remove(L"key");
    EXPECT_EQ(countObjects(), 0);
}

TEST_F(UnreachableObject, RemovedObjectWithAnId_ExistsUntilTheIdIsDestroyed)
{
    {
        const QeDbObjectId removed = addXrecord(L"key", L"removed");
        QeDbObjectId copy = removed;
        remove(L"key");
        copy.setNull();
        EXPECT_EQ(contentsOf(removed), "300:removed");
        EXPECT_EQ(countObjects(), 1);
    }
    EXPECT_EQ(countObjects(), 0);
}

TEST_F(UnreachableObject, ReplacedObjectWithAnId_CanBeUnerased)
{
    const QeDbObjectId replaced = addXrecord(L"key", L"replaced");
    replace(L"key");
    erase(replaced, false);
    EXPECT_EQ(contentsOf(replaced), "300:replaced");
    EXPECT_EQ(countObjects(), 2);
}

TEST_F(UnreachableObject, RemovedObject_ExistsWhileItIsOpen)
{
    QeDbObjectId id = addXrecord(L"key", L"removed");
    auto object = open<QeDbXrecord>(id);
    id.setNull();
    remove(L"key");
    EXPECT_EQ(countObjects(), 1);
    EXPECT_FALSE(object->isErased());
    object.close();
    EXPECT_EQ(countObjects(), 0);
}

TEST_F(UnreachableObject, ObjectRemovedInATransaction_ExistsUntilTheOutermostEnds)
{
    replace(L"key");
    begin();
    begin();
    remove(L"key");
    commit();
    EXPECT_EQ(countObjects(), 1);
    commit();
    EXPECT_EQ(countObjects(), 0);
}

TEST_F(UnreachableObject, ObjectRemovedInAnAbortedTransaction_IsRestored)
{
    replace(L"key");
    begin();
    remove(L"key");
    replace(L"key");
    abort();
    EXPECT_EQ(keys(), L"key");
    EXPECT_EQ(countObjects(), 1);
}

TEST_F(UnreachableObject, ObjectWhoseIdIsDestroyedInATransaction_ExistsUntilTheTransactionEnds)
{
    QeDbObjectId id = addXrecord(L"key");
    remove(L"key");
    begin();
    erase(id);
    id.setNull();
    EXPECT_EQ(countObjects(), 1);
    abort();
    EXPECT_EQ(countObjects(), 0);
}

TEST_F(UnreachableObject, ObjectWhoseCreationIsUndone_IsDestroyedWhenItIsClosed)
{
    begin();
    QeDbObjectId nested = addDictionary(L"nested");
    addXrecord(nested, L"inner");
    registerApplication(L"APP");
    addGeoData();
    auto inner = open<QeDbDictionary>(nested);
    abort();
    EXPECT_EQ(countObjects(), 1);
    EXPECT_TRUE(inner->ownerId().isNull());
    inner.close();
    EXPECT_EQ(tryOpen(nested, QeDb::kForRead, true), Qeapp::eObjectErased);
    nested.setNull();
    EXPECT_EQ(countObjects(), 0);
}

TEST_F(UnreachableObject, RemovedDictionary_IsDestroyedWithItsEntries)
{
    addXrecord(addDictionary(L"nested"), L"inner");
    addXrecord(addDictionary(L"nested"), L"inner");
    EXPECT_EQ(countObjects(), 2);
    remove(L"nested");
    EXPECT_EQ(countObjects(), 0);
}

TEST_F(UnreachableObject, RemovedDictionary_ExistsWhileAnEntryIsReachable)
{
    QeDbObjectId inner = addXrecord(addDictionary(L"nested"), L"inner");
    remove(L"nested");
    EXPECT_EQ(countObjects(), 2);
    EXPECT_TRUE(open<QeDbDictionary>(open(inner)->ownerId())->has(L"inner"));
    inner.setNull();
    EXPECT_EQ(countObjects(), 0);
}

TEST_F(UnreachableObject, ErasedEntry_IsNotDestroyed)
{
    erase(addXrecord(L"key"));
    EXPECT_EQ(countObjects(), 1);
}

TEST_F(UnreachableObject, Iterator_KeepsItsObjectsReachable)
{
    addXrecord(L"a", L"first");
    addXrecord(L"b", L"second");
    const std::unique_ptr<QeDbDictionaryIterator> entry(namedObjects()->newIterator());
    remove(L"a");
    remove(L"b");
    EXPECT_EQ(contentsOf(entry->objectId()), "300:first");
    EXPECT_TRUE(entry->next());
    EXPECT_EQ(contentsOf(entry->objectId()), "300:second");
}

TEST_F(UnreachableObject, Id_IsUsableAfterItsDrawing)
{
    QeDbObjectId id;
    {
        QeDbDatabase other;
        ASSERT_EQ(qedbSymUtil()->blockModelSpaceId(&other, id), Qeapp::eOk);
    }
    const QeDbObjectId copy = id;
    EXPECT_EQ(copy.handle(), 4U);
    EXPECT_EQ(tryOpen(copy, QeDb::kForRead), Qeapp::eUnknownObjectId);
}

/// Opens the erased object and closes it again, which releases the last use of it.
class Visitor final : public QeDbObjectReactor {
public:
    void erased(const QeDbObject* object, bool /*erasing*/) override
    {
        QeDbObject* opened = nullptr;
        EXPECT_EQ(qedbOpenQeDbObject(opened, object->objectId(), QeDb::kForRead, true), Qeapp::eOk);
        EXPECT_EQ(opened->close(), Qeapp::eOk);
        EXPECT_TRUE(object->isErased());
        ++visits;
    }

    int visits = 0;
};

TEST_F(UnreachableObject, ReplacedObject_NotifiesItsReactorsBeforeItIsDestroyed)
{
    Visitor first;
    Visitor second;
    {
        const auto object = open(addXrecord(L"key"));
        object->addReactor(&first);
        object->addReactor(&second);
    }
    replace(L"key");
    EXPECT_EQ(first.visits, 1);
    EXPECT_EQ(second.visits, 1);
    EXPECT_EQ(countObjects(), 1);
}

TEST_F(UnreachableObject, DestroyedObject_LeavesItsReactorsAlive)
{
    const Embedded::ResourceCounts before = Embedded::ResourceCounters::now();
    QeDbObjectReactor reactor;
    open(addXrecord(L"key"))->addReactor(&reactor);
    remove(L"key");
    EXPECT_EQ(Embedded::ResourceCounters::difference(before, Embedded::ResourceCounters::now()), "");
}

} // namespace
} // namespace Tests
