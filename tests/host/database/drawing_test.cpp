#include "host/database/drawing_test.h"

#include <sstream>

#include "embedded/base/hex.h"
#include "embedded/base/text.h"

namespace Tests {
namespace {

void printValue(std::ostream& text, const resbuf& item)
{
    switch (qeutValueKind(item.restype)) {
    case QeRb::ValueKind::string:
        text << Embedded::utf8FromWide(item.resval.rstring);
        break;
    case QeRb::ValueKind::binary:
        text << Embedded::hexFromBytes({item.resval.rbinary.buf, static_cast<std::size_t>(item.resval.rbinary.clen)});
        break;
    case QeRb::ValueKind::real:
        text << item.resval.rreal;
        break;
    case QeRb::ValueKind::integer16:
        text << item.resval.rint;
        break;
    case QeRb::ValueKind::integer32:
        text << item.resval.rlong;
        break;
    case QeRb::ValueKind::none:
        text << '?';
        break;
    }
}

QeDbObjectId addTo(QeDbDictionary& dictionary, const wchar_t* key, QeDbObject* object)
{
    QeDbObjectId id;
    EXPECT_EQ(dictionary.setAt(key, object, id), Qeapp::eOk);
    EXPECT_EQ(object->close(), Qeapp::eOk);
    return id;
}

QeDbXrecord* newXrecord(const wchar_t* text)
{
    auto* xrecord = new QeDbXrecord;
    const ResbufChain chain(qeutBuildList(QeRb::kText, text, QeRb::kListEnd));
    EXPECT_EQ(xrecord->setFromRbChain(chain.get()), Qeapp::eOk);
    return xrecord;
}

template <class Record, class Table>
QeDbObjectId addRecord(Table& table, const wchar_t* name)
{
    auto* record = new Record;
    EXPECT_EQ(record->setName(name), Qeapp::eOk);
    QeDbObjectId id;
    EXPECT_EQ(table.add(id, record), Qeapp::eOk);
    EXPECT_EQ(record->close(), Qeapp::eOk);
    return id;
}

} // namespace

std::string textOf(const resbuf* chain)
{
    std::ostringstream text;
    for (const resbuf* item = chain; item != nullptr; item = item->rbnext) {
        text << (item != chain ? " " : "") << item->restype << ':';
        printValue(text, *item);
    }
    return text.str();
}

Opened<QeDbDictionary> DrawingTest::namedObjects(QeDb::OpenMode mode)
{
    QeDbDictionary* dictionary = nullptr;
    EXPECT_EQ(database.getNamedObjectsDictionary(dictionary, mode), Qeapp::eOk);
    return Opened<QeDbDictionary>(dictionary);
}

Opened<QeDbRegAppTable> DrawingTest::regAppTable(QeDb::OpenMode mode)
{
    QeDbRegAppTable* table = nullptr;
    EXPECT_EQ(database.getRegAppTable(table, mode), Qeapp::eOk);
    return Opened<QeDbRegAppTable>(table);
}

Opened<QeDbBlockTable> DrawingTest::blockTable(QeDb::OpenMode mode)
{
    QeDbBlockTable* table = nullptr;
    EXPECT_EQ(database.getBlockTable(table, mode), Qeapp::eOk);
    return Opened<QeDbBlockTable>(table);
}

QeDbObjectId DrawingTest::modelSpace()
{
    QeDbObjectId id;
    EXPECT_EQ(qedbSymUtil()->blockModelSpaceId(&database, id), Qeapp::eOk);
    return id;
}

QeDbObjectId DrawingTest::addXrecord(const wchar_t* key, const wchar_t* text)
{
    return addTo(*namedObjects(QeDb::kForWrite).get(), key, newXrecord(text));
}

QeDbObjectId DrawingTest::addXrecord(QeDbObjectId dictionary, const wchar_t* key, const wchar_t* text)
{
    return addTo(*open<QeDbDictionary>(dictionary, QeDb::kForWrite).get(), key, newXrecord(text));
}

QeDbObjectId DrawingTest::addDictionary(const wchar_t* key)
{
    return addTo(*namedObjects(QeDb::kForWrite).get(), key, new QeDbDictionary);
}

QeDbObjectId DrawingTest::registerApplication(const wchar_t* name)
{
    return addRecord<QeDbRegAppTableRecord>(*regAppTable(QeDb::kForWrite).get(), name);
}

QeDbObjectId DrawingTest::addBlock(const wchar_t* name)
{
    return addRecord<QeDbBlockTableRecord>(*blockTable(QeDb::kForWrite).get(), name);
}

QeDbObjectId DrawingTest::addGeoData(const wchar_t* text)
{
    auto* geoData = new QeDbGeoData;
    EXPECT_EQ(geoData->setBlockTableRecordId(modelSpace()), Qeapp::eOk);
    EXPECT_EQ(geoData->setCoordinateSystem(text), Qeapp::eOk);
    QeDbObjectId id;
    EXPECT_EQ(geoData->postToDb(id), Qeapp::eOk);
    EXPECT_EQ(geoData->close(), Qeapp::eOk);
    return id;
}

Qeapp::ErrorStatus DrawingTest::tryOpen(QeDbObjectId id, QeDb::OpenMode mode, bool openErased)
{
    QeDbObject* object = nullptr;
    const Qeapp::ErrorStatus status = qedbOpenQeDbObject(object, id, mode, openErased);
    EXPECT_EQ(object != nullptr, status == Qeapp::eOk);
    const Opened<QeDbObject> opened(object);
    return status;
}

void DrawingTest::erase(QeDbObjectId id, bool erasing)
{
    EXPECT_EQ(open(id, QeDb::kForWrite, true)->erase(erasing), Qeapp::eOk);
}

void DrawingTest::writeText(QeDbObjectId xrecord, const wchar_t* text)
{
    const ResbufChain chain(qeutBuildList(QeRb::kText, text, QeRb::kListEnd));
    EXPECT_EQ(open<QeDbXrecord>(xrecord, QeDb::kForWrite)->setFromRbChain(chain.get()), Qeapp::eOk);
}

std::string DrawingTest::contentsOf(QeDbObjectId xrecord)
{
    ResbufChain chain;
    EXPECT_EQ(open<QeDbXrecord>(xrecord)->rbChain(chain.put()), Qeapp::eOk);
    return textOf(chain.get());
}

std::wstring DrawingTest::keys()
{
    const std::unique_ptr<QeDbDictionaryIterator> iterator(namedObjects()->newIterator());
    std::wstring keys;
    for (; !iterator->done(); iterator->next())
        keys += (keys.empty() ? L"" : L" ") + std::wstring(iterator->name());
    return keys;
}

} // namespace Tests
