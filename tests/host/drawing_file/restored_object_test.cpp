// Objects that were erased or removed before a save are restored afterwards, although the file no longer has their
// contents.
#include <functional>

#include "host/drawing_file/drawing_file_test.h"

namespace Tests {
namespace {

/// A file with a dictionary in a dictionary, neither of which is loaded yet.
class RestoredObject : public DrawingFileTest {
protected:
    RestoredObject()
    {
        Drawing drawing;
        drawing.withRegisteredApplication(L"APP").withDictionary(L"outer");
        const QeDbObjectId outer = findEntry(openNamedObjects(*drawing.database())->objectId(), L"outer");
        add(outer, L"inner", new QeDbDictionary);
        const QeDbObjectId inner = findEntry(outer, L"inner");
        addXrecord(inner, L"deep", 1);
        addXrecord(inner, L"deeper", 2);
        writeDrawing(drawing);
        before = drawing.contents();
        database = loadFile(DrawingAccess::changing);
        root = openNamedObjects(*database)->objectId();
    }

    template <class T = QeDbObject>
    static Opened<T> open(QeDbObjectId id, QeDb::OpenMode mode = QeDb::kForWrite)
    {
        T* object = nullptr;
        EXPECT_EQ(qedbOpenObject(object, id, mode, true), Qeapp::eOk);
        return Opened<T>(object);
    }
    static QeDbObjectId findEntry(QeDbObjectId dictionary, const wchar_t* key)
    {
        QeDbObjectId id;
        EXPECT_EQ(open<QeDbDictionary>(dictionary, QeDb::kForRead)->getAt(key, id), Qeapp::eOk);
        return id;
    }
    static QeDbObjectId add(QeDbObjectId dictionary, const wchar_t* key, QeDbObject* object)
    {
        QeDbObjectId id;
        EXPECT_EQ(open<QeDbDictionary>(dictionary)->setAt(key, object, id), Qeapp::eOk);
        EXPECT_EQ(object->close(), Qeapp::eOk);
        return id;
    }
    static QeDbObjectId addXrecord(QeDbObjectId dictionary, const wchar_t* key, int value)
    {
        auto* xrecord = new QeDbXrecord;
        EXPECT_EQ(xrecord->setFromRbChain(makeChain(Items{{1071, value}}).get()), Qeapp::eOk);
        return add(dictionary, key, xrecord);
    }
    QeDbObjectId findApplication(const wchar_t* name)
    {
        QeDbRegAppTable* table = nullptr;
        EXPECT_EQ(database->getRegAppTable(table, QeDb::kForRead), Qeapp::eOk);
        const Opened<QeDbRegAppTable> opened(table);
        QeDbObjectId id;
        EXPECT_EQ(opened->getAt(name, id), Qeapp::eOk);
        return id;
    }
    static void setData(QeDbObjectId id)
    {
        EXPECT_EQ(open(id)->setXData(makeChain({{1001, L"APP"}, {1000, L"data"}}).get()), Qeapp::eOk);
    }
    QeDbObjectId outerId() { return findEntry(root, L"outer"); }
    static void erase(QeDbObjectId id, bool erasing = true) { EXPECT_EQ(open(id)->erase(erasing), Qeapp::eOk); }
    void remove(const wchar_t* key) { EXPECT_EQ(open<QeDbDictionary>(root)->remove(key), Qeapp::eOk); }
    QeDbTransactionManager& transactions() { return *database->transactionManager(); }

    /// Saves the drawing. The file must be sound and have the contents of the drawing.
    void expectSaved()
    {
        ASSERT_EQ(outcome(save(*database)), "0");
        EXPECT_EQ(fileContents(), drawingContents(*database));
        EXPECT_EQ(DrawingSql(file).text("PRAGMA integrity_check"), "ok");
        EXPECT_EQ(DrawingSql(file).integer("SELECT count(*) FROM pragma_foreign_key_check"), 0);
    }
    int countRows(const std::string& table)
    {
        return static_cast<int>(DrawingSql(file).integer("SELECT count(*) FROM " + table));
    }

    std::string before;
    Database database;
    QeDbObjectId root;
};

TEST_F(RestoredObject, ErasedSubtree_CanBeUnerasedAfterASave)
{
    const QeDbObjectId outer = outerId();
    erase(outer);
    expectSaved();
    EXPECT_EQ(countRows("resbufs"), 0);
    erase(outer, false);
    expectSaved();
    EXPECT_EQ(fileContents(), before);
}

TEST_F(RestoredObject, RemovedSubtree_IsRestoredByAnAbortAfterASave)
{
    ASSERT_NE(transactions().startTransaction(), nullptr);
    remove(L"outer");
    expectSaved();
    ASSERT_EQ(transactions().abortTransaction(), Qeapp::eOk);
    EXPECT_EQ(drawingContents(*database), before);
    expectSaved();
    EXPECT_EQ(fileContents(), before);
}

TEST_F(RestoredObject, ReplacedSubtree_IsRestoredByAnAbortAfterTwoSaves)
{
    ASSERT_NE(transactions().startTransaction(), nullptr);
    addXrecord(root, L"outer", 3);
    expectSaved();
    expectSaved();
    ASSERT_EQ(transactions().abortTransaction(), Qeapp::eOk);
    expectSaved();
    EXPECT_EQ(fileContents(), before);
}

TEST_F(RestoredObject, ChildOfAnErasedDictionary_KeepsItsChanges)
{
    const QeDbObjectId outer = outerId();
    const QeDbObjectId inner = findEntry(outer, L"inner");
    const QeDbObjectId deep = findEntry(inner, L"deep");
    erase(outer);
    expectSaved();
    EXPECT_EQ(open<QeDbXrecord>(deep)->setFromRbChain(makeChain(Items{{1071, 9}}).get()), Qeapp::eOk);
    addXrecord(inner, L"new", 4);
    expectSaved();
    erase(outer, false);
    expectSaved();
    EXPECT_EQ(countRows("resbufs"), 3);
    EXPECT_EQ(DrawingSql(file).integer("SELECT sum(value) FROM resbufs"), 2 + 9 + 4);
}

TEST_F(RestoredObject, DictionaryErasedBelowAnErasedOne_StaysErased)
{
    const QeDbObjectId outer = outerId();
    const QeDbObjectId inner = findEntry(outer, L"inner");
    erase(inner);
    erase(outer);
    expectSaved();
    erase(outer, false);
    expectSaved();
    EXPECT_EQ(countRows("objects"), 6) << "the roots, model space, the application and the outer dictionary";
    erase(inner, false);
    expectSaved();
    EXPECT_EQ(fileContents(), before);
}

TEST_F(RestoredObject, ObjectOfAnAbortedTransaction_IsRemovedFromTheFile)
{
    ASSERT_NE(transactions().startTransaction(), nullptr);
    addXrecord(root, L"new", 3);
    expectSaved();
    EXPECT_EQ(countRows("resbufs"), 3);
    ASSERT_EQ(transactions().abortTransaction(), Qeapp::eOk);
    addXrecord(root, L"other", 4); // with the same handle
    expectSaved();
    EXPECT_EQ(countRows("resbufs"), 3);
}

TEST_F(RestoredObject, ReusedHandle_DoesNotBringBackExtendedDataOfADestroyedObject)
{
    // An object with extended data is saved and destroyed, and another object gets its handle.
    const QeDbObjectId application = findApplication(L"APP");
    ASSERT_NE(transactions().startTransaction(), nullptr);
    setData(addXrecord(root, L"new", 3));
    expectSaved();
    ASSERT_EQ(transactions().abortTransaction(), Qeapp::eOk);
    addXrecord(root, L"new", 5);
    erase(application);
    expectSaved();
    EXPECT_EQ(DrawingSql(file).integer("SELECT sum(value) FROM resbufs"), 1 + 2 + 5);
}

TEST_F(RestoredObject, ExtendedData_FollowTheirRenamedOrErasedApplication)
{
    const QeDbObjectId outer = outerId();
    setData(outer);
    expectSaved();
    database = loadFile(DrawingAccess::changing);
    const QeDbObjectId application = findApplication(L"APP");
    const std::string withData = fileContents();

    EXPECT_EQ(open<QeDbRegAppTableRecord>(application)->setName(L"OTHER"), Qeapp::eOk);
    expectSaved();
    EXPECT_NE(fileContents().find("extended data of \"OTHER\" 1000 \"data\""), std::string::npos);
    erase(application); // the object that has the data is not loaded
    expectSaved();
    EXPECT_EQ(countRows("extended_data"), 0);
    erase(application, false);
    EXPECT_EQ(open<QeDbRegAppTableRecord>(application)->setName(L"APP"), Qeapp::eOk);
    expectSaved();
    EXPECT_EQ(fileContents(), withData);
}

TEST_F(RestoredObject, ApplicationWithExtendedDataOfItself_IsSaved)
{
    const QeDbObjectId application = findApplication(L"APP");
    setData(application);
    setData(open(application)->ownerId()); // the table of applications
    expectSaved();
}

TEST_F(RestoredObject, GeoDataOfAnErasedBlock_AreRestoredWithTheBlock)
{
    auto* block = new QeDbBlockTableRecord;
    ASSERT_EQ(block->setName(L"BLOCK"), Qeapp::eOk);
    QeDbBlockTable* table = nullptr;
    ASSERT_EQ(database->getBlockTable(table, QeDb::kForWrite), Qeapp::eOk);
    QeDbObjectId blockId;
    EXPECT_EQ(table->add(blockId, block), Qeapp::eOk);
    EXPECT_EQ(block->close(), Qeapp::eOk);
    EXPECT_EQ(table->close(), Qeapp::eOk);
    auto* geoData = new QeDbGeoData;
    EXPECT_EQ(geoData->setBlockTableRecordId(blockId), Qeapp::eOk);
    EXPECT_EQ(geoData->setCoordinateSystem(L"text"), Qeapp::eOk);
    QeDbObjectId id;
    EXPECT_EQ(geoData->postToDb(id), Qeapp::eOk);
    EXPECT_EQ(geoData->close(), Qeapp::eOk);
    expectSaved();
    const std::string whole = fileContents();

    const std::uint64_t handle = blockId.handle();
    database = loadFile(DrawingAccess::changing); // the GeoData object is not loaded
    ASSERT_EQ(database->getBlockTable(table, QeDb::kForRead), Qeapp::eOk);
    EXPECT_EQ(table->getAt(L"BLOCK", blockId), Qeapp::eOk);
    EXPECT_EQ(table->close(), Qeapp::eOk);
    EXPECT_EQ(blockId.handle(), handle);
    erase(blockId);
    expectSaved();
    EXPECT_EQ(countRows("objects WHERE class = 'QeDbGeoData'"), 0);
    erase(blockId, false);
    expectSaved();
    EXPECT_EQ(fileContents(), whole);
}

TEST_F(RestoredObject, ObjectOfAnotherDictionary_IsNotRemovedByItsId)
{
    const QeDbObjectId inner = findEntry(outerId(), L"inner");
    EXPECT_EQ(open<QeDbDictionary>(root)->remove(inner), Qeapp::eKeyNotFound);
    EXPECT_EQ(drawingContents(*database), before);
}

} // namespace
} // namespace Tests
