// What left the drawing, and the file with a save, comes back: its contents lie in the file no more.
#include <functional>

#include "host/database/drawing_test.h"
#include "host/drawing_file/drawing_file_test.h"

namespace Tests {
namespace {

/// A drawing with a dictionary below a dictionary, open in a file from which nothing of that is loaded.
class RestoredObject : public DrawingFileTest {
protected:
    RestoredObject()
    {
        Drawing drawing;
        drawing.withRegisteredApplication(L"APP").withDictionary(L"outer");
        const QeDbObjectId outer = idIn(drawing.database(), namedObjectsId(drawing.database()), L"outer");
        add(outer, L"inner", new QeDbDictionary);
        const QeDbObjectId inner = idIn(drawing.database(), outer, L"inner");
        addXrecord(inner, L"deep", 1);
        addXrecord(inner, L"deeper", 2);
        given(drawing);
        before = drawing.contents();
        database = loaded(DrawingAccess::changing);
        root = namedObjectsId(database.get());
    }

    static QeDbObjectId namedObjectsId(QeDbDatabase* in)
    {
        QeDbDictionary* dictionary = nullptr;
        EXPECT_EQ(in->getNamedObjectsDictionary(dictionary, QeDb::kForRead), Qeapp::eOk);
        const Opened<QeDbDictionary> opened(dictionary);
        return opened->objectId();
    }
    template <class T = QeDbObject>
    static Opened<T> open(QeDbObjectId id, QeDb::OpenMode mode = QeDb::kForWrite)
    {
        T* object = nullptr;
        EXPECT_EQ(qedbOpenObject(object, id, mode, true), Qeapp::eOk);
        return Opened<T>(object);
    }
    static QeDbObjectId idIn(QeDbDatabase* /*in*/, QeDbObjectId dictionary, const wchar_t* key)
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
    QeDbObjectId outerId() { return idIn(database.get(), root, L"outer"); }
    static void erase(QeDbObjectId id, bool erasing = true) { EXPECT_EQ(open(id)->erase(erasing), Qeapp::eOk); }
    void remove(const wchar_t* key) { EXPECT_EQ(open<QeDbDictionary>(root)->remove(key), Qeapp::eOk); }
    QeDbTransactionManager& transactions() { return *database->transactionManager(); }

    /// Saves, and finds in the file what the drawing is now.
    void expectSaved()
    {
        ASSERT_EQ(outcome(save(*database)), "0");
        EXPECT_EQ(inFile(), drawingContents(*database));
        EXPECT_EQ(DrawingSql(file).text("PRAGMA integrity_check"), "ok");
        EXPECT_EQ(DrawingSql(file).integer("SELECT count(*) FROM pragma_foreign_key_check"), 0);
    }
    int rows(const std::string& table)
    {
        return static_cast<int>(DrawingSql(file).integer("SELECT count(*) FROM " + table));
    }

    std::string before;
    Database database;
    QeDbObjectId root;
};

TEST_F(RestoredObject, AnErasedSubtree_IsUnerasedAfterASave)
{
    const QeDbObjectId outer = outerId();
    erase(outer);
    expectSaved();
    EXPECT_EQ(rows("resbufs"), 0);
    erase(outer, false);
    expectSaved();
    EXPECT_EQ(inFile(), before);
}

TEST_F(RestoredObject, ARemovedSubtree_IsRestoredByAnAbortAfterASave)
{
    ASSERT_NE(transactions().startTransaction(), nullptr);
    remove(L"outer");
    expectSaved();
    ASSERT_EQ(transactions().abortTransaction(), Qeapp::eOk);
    EXPECT_EQ(drawingContents(*database), before);
    expectSaved();
    EXPECT_EQ(inFile(), before);
}

TEST_F(RestoredObject, AReplacedSubtree_IsRestoredByAnAbortAfterTwoSaves)
{
    ASSERT_NE(transactions().startTransaction(), nullptr);
    addXrecord(root, L"outer", 3);
    expectSaved();
    expectSaved();
    ASSERT_EQ(transactions().abortTransaction(), Qeapp::eOk);
    expectSaved();
    EXPECT_EQ(inFile(), before);
}

TEST_F(RestoredObject, AChildOfAnErasedDictionary_IsChangedMeanwhile)
{
    const QeDbObjectId outer = outerId();
    const QeDbObjectId inner = idIn(database.get(), outer, L"inner");
    const QeDbObjectId deep = idIn(database.get(), inner, L"deep");
    erase(outer);
    expectSaved();
    EXPECT_EQ(open<QeDbXrecord>(deep)->setFromRbChain(makeChain(Items{{1071, 9}}).get()), Qeapp::eOk);
    addXrecord(inner, L"new", 4);
    expectSaved();
    erase(outer, false);
    expectSaved();
    EXPECT_EQ(rows("resbufs"), 3);
    EXPECT_EQ(DrawingSql(file).integer("SELECT sum(value) FROM resbufs"), 2 + 9 + 4);
}

TEST_F(RestoredObject, ADictionaryErasedBelowAnErasedOne_StaysErased)
{
    const QeDbObjectId outer = outerId();
    const QeDbObjectId inner = idIn(database.get(), outer, L"inner");
    erase(inner);
    erase(outer);
    expectSaved();
    erase(outer, false);
    expectSaved();
    EXPECT_EQ(rows("objects"), 6) << "the roots, model space, the application and the outer dictionary";
    erase(inner, false);
    expectSaved();
    EXPECT_EQ(inFile(), before);
}

TEST_F(RestoredObject, AnObjectOfAnAbortedTransaction_LeavesTheFileAgain)
{
    ASSERT_NE(transactions().startTransaction(), nullptr);
    addXrecord(root, L"new", 3);
    expectSaved();
    EXPECT_EQ(rows("resbufs"), 3);
    ASSERT_EQ(transactions().abortTransaction(), Qeapp::eOk);
    addXrecord(root, L"other", 4); // with the same handle
    expectSaved();
    EXPECT_EQ(rows("resbufs"), 3);
}

TEST_F(RestoredObject, ADestroyedObjectWhoseHandleIsUsedAgain_IsNotReadForARemovedApplication)
{
    // The object has extended data of the application in the file, is destroyed, and another one gets its handle.
    const QeDbObjectId application = [&] {
        QeDbRegAppTable* table = nullptr;
        EXPECT_EQ(database->getRegAppTable(table, QeDb::kForRead), Qeapp::eOk);
        const Opened<QeDbRegAppTable> opened(table);
        QeDbObjectId id;
        EXPECT_EQ(opened->getAt(L"APP", id), Qeapp::eOk);
        return id;
    }();
    ASSERT_NE(transactions().startTransaction(), nullptr);
    const auto setData = [&](QeDbObjectId id) {
        EXPECT_EQ(open(id)->setXData(makeChain({{1001, L"APP"}, {1000, L"data"}}).get()), Qeapp::eOk);
    };
    setData(addXrecord(root, L"new", 3));
    expectSaved();
    ASSERT_EQ(transactions().abortTransaction(), Qeapp::eOk);
    addXrecord(root, L"new", 5);
    erase(application);
    expectSaved();
    EXPECT_EQ(DrawingSql(file).integer("SELECT sum(value) FROM resbufs"), 1 + 2 + 5);
}

TEST_F(RestoredObject, ExtendedData_FollowARenamedApplicationAndAnErasedOne)
{
    const QeDbObjectId outer = outerId();
    EXPECT_EQ(open(outer)->setXData(makeChain({{1001, L"APP"}, {1000, L"data"}}).get()), Qeapp::eOk);
    expectSaved();
    database = loaded(DrawingAccess::changing);
    QeDbRegAppTable* table = nullptr;
    ASSERT_EQ(database->getRegAppTable(table, QeDb::kForRead), Qeapp::eOk);
    QeDbObjectId application;
    EXPECT_EQ(table->getAt(L"APP", application), Qeapp::eOk);
    EXPECT_EQ(table->close(), Qeapp::eOk);
    const std::string withData = inFile();

    EXPECT_EQ(open<QeDbRegAppTableRecord>(application)->setName(L"OTHER"), Qeapp::eOk);
    expectSaved();
    EXPECT_NE(inFile().find("extended data of \"OTHER\" 1000 \"data\""), std::string::npos);
    erase(application); // the object that has the data is not loaded
    expectSaved();
    EXPECT_EQ(rows("extended_data"), 0);
    erase(application, false);
    EXPECT_EQ(open<QeDbRegAppTableRecord>(application)->setName(L"APP"), Qeapp::eOk);
    expectSaved();
    EXPECT_EQ(inFile(), withData);
}

TEST_F(RestoredObject, AnApplicationWithExtendedDataOfItself_IsLoaded)
{
    const auto setData = [&](const wchar_t* name) {
        QeDbRegAppTable* table = nullptr;
        ASSERT_EQ(database->getRegAppTable(table, QeDb::kForWrite), Qeapp::eOk);
        const Opened<QeDbRegAppTable> opened(table);
        QeDbObjectId id;
        EXPECT_EQ(opened->getAt(name, id), Qeapp::eOk);
        const auto data = makeChain({{1001, L"APP"}, {1000, L"data"}});
        EXPECT_EQ(open(id)->setXData(data.get()), Qeapp::eOk);
        EXPECT_EQ(opened->setXData(data.get()), Qeapp::eOk);
    };
    setData(L"APP");
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
    const std::string whole = inFile();

    const std::uint64_t handle = blockId.handle();
    database = loaded(DrawingAccess::changing); // the GeoData object is not loaded
    ASSERT_EQ(database->getBlockTable(table, QeDb::kForRead), Qeapp::eOk);
    EXPECT_EQ(table->getAt(L"BLOCK", blockId), Qeapp::eOk);
    EXPECT_EQ(table->close(), Qeapp::eOk);
    EXPECT_EQ(blockId.handle(), handle);
    erase(blockId);
    expectSaved();
    EXPECT_EQ(rows("objects WHERE class = 'QeDbGeoData'"), 0);
    erase(blockId, false);
    expectSaved();
    EXPECT_EQ(inFile(), whole);
}

TEST_F(RestoredObject, AnObjectOfAnotherDictionary_IsNotRemovedByItsId)
{
    const QeDbObjectId inner = idIn(database.get(), outerId(), L"inner");
    EXPECT_EQ(open<QeDbDictionary>(root)->remove(inner), Qeapp::eKeyNotFound);
    EXPECT_EQ(drawingContents(*database), before);
}

} // namespace
} // namespace Tests
