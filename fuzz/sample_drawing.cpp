#include "fuzz/sample_drawing.h"

#include <limits>

#include <SQLiteCpp/SQLiteCpp.h>

#include "fuzz/oracle.h"
#include "fuzz/serialized_database.h"
#include "support/drawing.h"
#include "support/drawing_files/drawing_sql.h"

namespace Fuzz {
namespace {

using Tests::Bytes;
using Tests::Items;

Items makeEveryKindOfValue()
{
    const double infinity = std::numeric_limits<double>::infinity();
    const double noNumber = std::numeric_limits<double>::quiet_NaN();
    return {{300, L"L\u00E4nge \"x\""},
            {301, std::wstring(1, wchar_t{0xD83C})},
            {309, L""},
            {310, Bytes{0x03, 0x01, 0xFF, 0x83, 0x00}},
            {319, Bytes{}},
            {1000, L"EPSG:25832"},
            {1002, L"{"},
            {1004, Bytes(127, 0xFF)},
            {1002, L"}"},
            {1040, -0.0},
            {1040, 6378137.0},
            {1040, infinity},
            {1040, noNumber},
            {1070, std::numeric_limits<std::int16_t>::min()},
            {1071, 2147483647}};
}

void putIntoDictionary(QeDbDatabase* database, const wchar_t* key)
{
    Orvel::NamedObjects root;
    require(root.openIn(database, QeDb::kForRead) == Qeapp::eOk, "the sample has named objects");
    QeDbObjectId id;
    require(root->getAt(key, id) == Qeapp::eOk, "the sample has the dictionary");
    Orvel::HostObject<QeDbDictionary> dictionary;
    require(dictionary.open(id, QeDb::kForWrite) == Qeapp::eOk, "the dictionary can be opened");
    const Orvel::HostObject<QeDbDictionary> inner(new QeDbDictionary);
    require(dictionary->setAt(L"inner", inner.get(), id) == Qeapp::eOk, "a dictionary can be put into it");
    const Orvel::HostObject<QeDbXrecord> xrecord(new QeDbXrecord);
    require(xrecord->setFromRbChain(Tests::makeChain(makeEveryKindOfValue()).get(), database) == Qeapp::eOk,
            "an xrecord takes every kind of value");
    require(inner->setAt(L"values", xrecord.get(), id) == Qeapp::eOk, "an xrecord can be put below it");
    require(xrecord->setXData(Tests::makeChain({{1001, L"OTHER"}, {1000, L"x"}, {1070, 7}}).get()) == Qeapp::eOk,
            "an xrecord takes extended data");
}

std::string makeSample()
{
    Tests::Drawing drawing;
    drawing.withLegacyCode(L"EPSG:25832").withRegisteredApplication(L"OTHER");
    drawing.withXrecord({{1071, 1}, {1002, L"{"}, {310, Bytes{1}}, {1002, L"}"}}).withXrecord({}, L"EMPTY");
    drawing.withDictionary(L"A").withGeoData(L"LOCAL_CS[\"Werksnetz\"]");
    putIntoDictionary(drawing.database(), L"A");
    return Tests::saveToBytes(*drawing.database());
}

std::string makeSampleOfSmallPages()
{
    SQLite::Database sample(":memory:", SQLite::OPEN_READWRITE);
    restoreInto(sample, sampleDrawing());
    SQLite::Database small(":memory:", SQLite::OPEN_READWRITE);
    small.exec("PRAGMA page_size = 512");
    small.exec(Tests::dumpAsSql(sample));
    return serializeDatabase(small);
}

} // namespace

const std::string& sampleDrawing()
{
    static const std::string bytes = makeSample();
    return bytes;
}

const std::string& sampleDrawingOfSmallPages()
{
    static const std::string bytes = makeSampleOfSmallPages();
    return bytes;
}

} // namespace Fuzz
