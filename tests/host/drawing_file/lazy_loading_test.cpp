// Objects are read when they are opened. A damaged object fails when it is opened, and from then on the drawing cannot
// be saved.
#include "host/drawing_file/drawing_file_test.h"

namespace Tests {
namespace {

class LazyLoading : public DrawingFileTest {
protected:
    LazyLoading()
    {
        Drawing drawing;
        drawing.withXrecord({{300, L"good"}}, L"good").withXrecord({{300, L"bad"}}, L"bad").withGeoData(L"text");
        writeDrawing(drawing);
        DrawingSql sql(file);
        damaged = sql.integer("SELECT object FROM entries WHERE key = 'bad'");
        sql.run("UPDATE resbufs SET value = 'other' WHERE value = 'bad'"); // but not its checksum
        bytes = readFile(file);
    }
    static QeDbObjectId idOf(QeDbDatabase& database, const wchar_t* key)
    {
        QeDbObjectId id;
        EXPECT_EQ(openNamedObjects(database)->getAt(key, id), Qeapp::eOk);
        return id;
    }
    static Qeapp::ErrorStatus tryOpen(QeDbObjectId id, QeDb::OpenMode mode = QeDb::kForRead)
    {
        QeDbObject* object = nullptr;
        const Qeapp::ErrorStatus status = qedbOpenQeDbObject(object, id, mode);
        if (object != nullptr) {
            EXPECT_EQ(object->close(), Qeapp::eOk);
        }
        return status;
    }
    std::string damageRefusal() const
    {
        return refusal(Qeapp::eFileDamaged,
                       "table resbufs: the row of " + std::to_string(damaged) + " is not as it was written");
    }

    std::int64_t damaged = 0;
    std::string bytes;
};

TEST_F(LazyLoading, DamagedObjectThatIsNotOpened_DisturbsNothing)
{
    Drawing drawing(loadFile(DrawingAccess::changing));
    EXPECT_EQ(drawing.xrecord(L"good"), (Items{{300, L"good"}}));
    EXPECT_EQ(drawing.geoDataText(), L"text");
    drawing.withXrecord({{300, L"new"}}, L"new").withXrecord({{300, L"better"}}, L"good");
    EXPECT_EQ(outcome(Embedded::loadingResult(*drawing.database())), "0");
    EXPECT_EQ(outcome(save(*drawing.database())), "0");
    const Drawing again(loadFile());
    EXPECT_EQ(again.xrecord(L"good"), (Items{{300, L"better"}}));
    EXPECT_EQ(again.xrecord(L"new"), (Items{{300, L"new"}}));
}

TEST_F(LazyLoading, DamagedObjectThatIsOpened_FailsAndPreventsSaving)
{
    const Database database = loadFile(DrawingAccess::changing);
    EXPECT_EQ(tryOpen(idOf(*database, L"bad")), Qeapp::eFileDamaged);
    EXPECT_EQ(outcome(Embedded::loadingResult(*database)), damageRefusal());
    EXPECT_EQ(outcome(save(*database)), damageRefusal());
    EXPECT_EQ(outcome(Embedded::saveDrawingToBytes(*database, database->drawingVersion())), damageRefusal());
    EXPECT_EQ(outcome(Embedded::saveDrawing(*database, folder.path() / "b.qedb", database->drawingVersion())),
              damageRefusal());
    EXPECT_TRUE(readFile(file) == bytes);
    EXPECT_EQ(folder.names(), std::set<std::string>{"a.qedb"});
}

TEST_F(LazyLoading, DamagedObjectThatIsOpened_LeavesLoadedObjectsUsable)
{
    const Database database = loadFile();
    const QeDbObjectId good = idOf(*database, L"good");
    EXPECT_EQ(tryOpen(good), Qeapp::eOk);
    EXPECT_EQ(tryOpen(idOf(*database, L"bad")), Qeapp::eFileDamaged);
    EXPECT_EQ(tryOpen(good, QeDb::kForWrite), Qeapp::eOk);
}

TEST_F(LazyLoading, DamagedEntry_CannotBeReplacedOrRemoved)
{
    const Database database = loadFile(DrawingAccess::changing);
    const auto dictionary = openNamedObjects(*database, QeDb::kForWrite);
    const std::unique_ptr<QeDbXrecord> replacement = std::make_unique<QeDbXrecord>();
    QeDbObjectId id;
    EXPECT_EQ(dictionary->setAt(L"bad", replacement.get(), id), Qeapp::eFileDamaged);
    EXPECT_TRUE(id.isNull());
    EXPECT_EQ(dictionary->remove(L"bad"), Qeapp::eFileDamaged);
}

TEST_F(LazyLoading, DamagedEntryRow_FailsOnlyForItsKey)
{
    DrawingSql(file).run("UPDATE entries SET checksum = checksum + 1 WHERE key = 'good'");
    const Database database = loadFile();
    const auto dictionary = openNamedObjects(*database);
    QeDbObjectId id;
    EXPECT_EQ(dictionary->getAt(L"absent", id), Qeapp::eKeyNotFound);
    EXPECT_EQ(dictionary->getAt(L"good", id), Qeapp::eFileDamaged);
    EXPECT_EQ(outcome(Embedded::loadingResult(*database)),
              refusal(Qeapp::eFileDamaged, "table entries: the row of 1 is not as it was written"));
}

TEST_F(LazyLoading, MissingRow_IsReportedWhenItsOwnerIsLoaded)
{
    const std::pair<const char*, std::string> cases[] = {
        {"DELETE FROM entries WHERE key = 'good'", "object 1: not all of its entries are there"},
        {"DELETE FROM resbufs WHERE value = 'good'", "object 5: not all of its values are there"},
    };
    for (const auto& [sql, reason] : cases) {
        writeFile(file, bytes);
        DrawingSql(file).run(sql);
        const Database database = loadFile();
        EXPECT_EQ(outcome(Embedded::loadingResult(*database)), "0");
        const auto dictionary = openNamedObjects(*database);
        QeDbObjectId id;
        if (dictionary->getAt(L"good", id) == Qeapp::eOk)
            static_cast<void>(tryOpen(id)); // the failure is checked below
        EXPECT_EQ(std::unique_ptr<QeDbDictionaryIterator>(dictionary->newIterator()), nullptr);
        EXPECT_EQ(outcome(Embedded::loadingResult(*database)), refusal(Qeapp::eFileDamaged, reason));
    }
}

} // namespace
} // namespace Tests
