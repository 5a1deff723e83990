#include "host/database/drawing_test.h"

namespace Tests {
namespace {

class Dictionary : public DrawingTest {
protected:
    QeDbObjectId idAt(const wchar_t* key)
    {
        QeDbObjectId id;
        const Qeapp::ErrorStatus status = namedObjects()->getAt(key, id);
        EXPECT_EQ(status, id.isNull() ? Qeapp::eKeyNotFound : Qeapp::eOk);
        return id;
    }
};

TEST_F(Dictionary, NewDrawing_HasNoEntries)
{
    EXPECT_EQ(namedObjects()->numEntries(), 0U);
    EXPECT_EQ(keys(), L"");
}

TEST_F(Dictionary, AddedObject_IsFoundUnderItsKey)
{
    const QeDbObjectId id = addXrecord(L"key");
    EXPECT_EQ(idAt(L"key"), id);
    EXPECT_TRUE(namedObjects()->has(L"key"));
    EXPECT_EQ(namedObjects()->numEntries(), 1U);
}

TEST_F(Dictionary, AddedObject_StaysOpenForWrite)
{
    const auto dictionary = namedObjects(QeDb::kForWrite);
    auto* xrecord = new QeDbXrecord;
    QeDbObjectId id;
    ASSERT_EQ(dictionary->setAt(L"key", xrecord, id), Qeapp::eOk);
    const Opened<QeDbXrecord> opened(xrecord);
    EXPECT_TRUE(opened->isWriteEnabled());
    EXPECT_EQ(tryOpen(id, QeDb::kForRead), Qeapp::eOpenForWrite);
}

TEST_F(Dictionary, Keys_AreComparedExactly)
{
    addXrecord(L"key");
    EXPECT_TRUE(idAt(L"KEY").isNull());
    EXPECT_TRUE(idAt(L"ke").isNull());
    EXPECT_TRUE(idAt(L"key ").isNull());
}

TEST_F(Dictionary, AddUnderAnExistingKey_ReplacesAndErasesTheOldObject)
{
    const QeDbObjectId first = addXrecord(L"key", L"first");
    const QeDbObjectId second = addXrecord(L"key", L"second");
    EXPECT_EQ(idAt(L"key"), second);
    EXPECT_EQ(namedObjects()->numEntries(), 1U);
    EXPECT_EQ(tryOpen(first, QeDb::kForRead), Qeapp::eObjectErased);
}

TEST_F(Dictionary, EntryThatIsOpen_CannotBeReplaced)
{
    const QeDbObjectId first = addXrecord(L"key");
    const auto reader = open(first);
    const auto dictionary = namedObjects(QeDb::kForWrite);
    const auto second = std::make_unique<QeDbXrecord>();
    QeDbObjectId id;
    EXPECT_EQ(dictionary->setAt(L"key", second.get(), id), Qeapp::eOpenForRead);
    EXPECT_TRUE(id.isNull());
    EXPECT_TRUE(second->objectId().isNull());
    EXPECT_FALSE(reader->isErased());
}

TEST_F(Dictionary, RefusedAdd_LeavesTheObjectWithTheCaller)
{
    const auto object = std::make_unique<QeDbXrecord>();
    QeDbObjectId id;
    {
        const auto writer = namedObjects(QeDb::kForWrite);
        EXPECT_EQ(writer->setAt(nullptr, object.get(), id), Qeapp::eInvalidKey);
        EXPECT_EQ(writer->setAt(L"", object.get(), id), Qeapp::eInvalidKey);
        EXPECT_EQ(writer->setAt(L"key", nullptr, id), Qeapp::eInvalidInput);
    }
    EXPECT_EQ(namedObjects()->setAt(L"key", object.get(), id), Qeapp::eNotOpenForWrite);
    QeDbDictionary homeless;
    EXPECT_EQ(homeless.setAt(L"key", object.get(), id), Qeapp::eNotInDatabase);
    EXPECT_TRUE(object->objectId().isNull());
    EXPECT_EQ(keys(), L"");
}

TEST_F(Dictionary, ResidentObject_CannotBeAddedAgain)
{
    const QeDbObjectId id = addXrecord(L"key");
    const auto dictionary = namedObjects(QeDb::kForWrite);
    const auto object = open(id, QeDb::kForWrite);
    QeDbObjectId again;
    EXPECT_EQ(dictionary->setAt(L"other", object.get(), again), Qeapp::eAlreadyInDatabase);
    EXPECT_FALSE(dictionary->has(L"other"));
}

TEST_F(Dictionary, TableRecord_CannotBeAdded)
{
    QeDbRegAppTableRecord record;
    QeDbObjectId id;
    EXPECT_EQ(namedObjects(QeDb::kForWrite)->setAt(L"key", &record, id), Qeapp::eNotThatKindOfClass);
}

TEST_F(Dictionary, RemovalByKey_DetachesTheObjectWithoutErasingIt)
{
    const QeDbObjectId id = addXrecord(L"key");
    QeDbObjectId removed;
    EXPECT_EQ(namedObjects(QeDb::kForWrite)->remove(L"key", removed), Qeapp::eOk);
    EXPECT_EQ(removed, id);
    EXPECT_EQ(keys(), L"");
    const auto object = open(id);
    EXPECT_FALSE(object->isErased());
    EXPECT_TRUE(object->ownerId().isNull());
}

TEST_F(Dictionary, RemovalById_RemovesTheEntry)
{
    const QeDbObjectId first = addXrecord(L"a");
    addXrecord(L"b");
    EXPECT_EQ(namedObjects(QeDb::kForWrite)->remove(first), Qeapp::eOk);
    EXPECT_EQ(keys(), L"b");
    EXPECT_EQ(namedObjects(QeDb::kForWrite)->remove(first), Qeapp::eKeyNotFound);
}

TEST_F(Dictionary, RemovalOfAMissingEntry_IsRefused)
{
    const auto dictionary = namedObjects(QeDb::kForWrite);
    QeDbObjectId id = modelSpace();
    EXPECT_EQ(dictionary->remove(L"key", id), Qeapp::eKeyNotFound);
    EXPECT_TRUE(id.isNull());
    EXPECT_EQ(dictionary->remove(L"key"), Qeapp::eKeyNotFound);
    EXPECT_EQ(dictionary->remove(static_cast<const wchar_t*>(nullptr)), Qeapp::eInvalidKey);
    EXPECT_EQ(dictionary->remove(QeDbObjectId()), Qeapp::eNullObjectId);
    EXPECT_EQ(dictionary->remove(modelSpace()), Qeapp::eKeyNotFound);
}

TEST_F(Dictionary, RemovalThroughAReader_IsRefused)
{
    const QeDbObjectId id = addXrecord(L"key");
    const auto reader = namedObjects();
    EXPECT_EQ(reader->remove(L"key"), Qeapp::eNotOpenForWrite);
    EXPECT_EQ(reader->remove(id), Qeapp::eNotOpenForWrite);
    EXPECT_TRUE(reader->has(L"key"));
}

TEST_F(Dictionary, GetAtWithMode_OpensTheEntry)
{
    addXrecord(L"key");
    QeDbObject* object = nullptr;
    ASSERT_EQ(namedObjects()->getAt(L"key", object, QeDb::kForWrite), Qeapp::eOk);
    EXPECT_TRUE(Opened<QeDbObject>(object)->isWriteEnabled());
}

TEST_F(Dictionary, GetAtOfAMissingKey_ReturnsNothing)
{
    QeDbObject* object = nullptr;
    QeDbObjectId id = modelSpace();
    EXPECT_EQ(namedObjects()->getAt(L"key", object, QeDb::kForRead), Qeapp::eKeyNotFound);
    EXPECT_EQ(object, nullptr);
    EXPECT_EQ(namedObjects()->getAt(nullptr, id), Qeapp::eInvalidKey);
    EXPECT_TRUE(id.isNull());
    EXPECT_FALSE(namedObjects()->has(nullptr));
}

TEST_F(Dictionary, NestedDictionary_OwnsItsEntries)
{
    const QeDbObjectId nested = addDictionary(L"nested");
    const QeDbObjectId inner = addXrecord(nested, L"inner", L"deep");
    EXPECT_EQ(open(inner)->ownerId(), nested);
    EXPECT_EQ(keys(), L"nested");
    EXPECT_EQ(contentsOf(inner), "300:deep");
}

TEST_F(Dictionary, ClosedDictionary_ReturnsNothing)
{
    addXrecord(L"key");
    auto opened = namedObjects();
    QeDbDictionary* closed = opened.get();
    opened.close();
    QeDbObjectId id;
    EXPECT_EQ(closed->getAt(L"key", id), Qeapp::eNotOpenForRead);
    EXPECT_FALSE(closed->has(L"key"));
    EXPECT_EQ(closed->numEntries(), 0U);
    EXPECT_EQ(closed->newIterator(), nullptr);
}

} // namespace
} // namespace Tests
