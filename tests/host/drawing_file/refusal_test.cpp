// Files that are not drawings, or are damaged. Each is refused with a message that says why, and stays unchanged.
#include <vector>

#include "embedded/host/drawing_file/drawing_dump.h"
#include "host/drawing_file/drawing_file_test.h"
#include "support/case_name.h"

namespace Tests {
namespace {

/// The first bytes of a drawing of format 1.
constexpr const char* kFormat1 = "{\n  \"format\": \"embedded host drawing\",\n  \"formatVersion\": 1,\n";

class FileRefusal : public DrawingFileTest {
protected:
    FileRefusal()
    {
        Drawing drawing;
        drawing.withLegacyCode(L"EPSG:25832").withXrecord({{300, L"text"}, {1040, 2.5}, {310, Bytes{1}}}, L"values");
        drawing.withDictionary(L"dictionary").withGeoData(L"geodata");
        writeDrawing(drawing);
    }
    /// Loads every object with each access. Returns the outcome, which must be the same for all.
    std::string loadAll(const std::filesystem::path& path) const
    {
        std::string common;
        for (const DrawingAccess access : {DrawingAccess::sharing, DrawingAccess::reading, DrawingAccess::changing}) {
            const Expected<Database> database = load(path, access);
            const std::string result = database ? outcome(Embedded::dumpDrawing(**database)) : outcome(database);
            if (common.empty())
                common = result;
            EXPECT_EQ(result, common);
        }
        return common;
    }
    void expectRefused(const std::string& reason, Qeapp::ErrorStatus status = Qeapp::eFileDamaged)
    {
        const std::string before = readFile(file);
        EXPECT_EQ(loadAll(file), refusal(status, reason));
        EXPECT_TRUE(readFile(file) == before) << "the file has changed";
        EXPECT_EQ(folder.names(), std::set<std::string>{"a.qedb"}) << "another file was created";
    }
};

TEST_F(FileRefusal, MissingFile_IsNotFound)
{
    std::filesystem::remove(file);
    EXPECT_EQ(loadAll(file), refusal(Qeapp::eFileNotFound, "No such file or directory"));
    EXPECT_EQ(folder.names(), std::set<std::string>());
}

TEST_F(FileRefusal, Folder_IsRefused)
{
    EXPECT_EQ(loadAll(folder.path()), refusal(folder.path(), Qeapp::eFileDamaged, "is a folder"));
}

TEST_F(FileRefusal, EmptyFile_IsRefused)
{
    writeFile(file, "");
    expectRefused("is empty, not a drawing");
}

TEST_F(FileRefusal, DrawingOfFormat1_IsRefused)
{
    writeFile(file, kFormat1);
    expectRefused("is a drawing of format 1, which is not read any more");
    writeFile(file, kFormat1 + std::string(10'000, ' '));
    expectRefused("is a drawing of format 1, which is not read any more");
}

TEST_F(FileRefusal, FileThatIsNotADatabase_IsRefused)
{
    for (const std::string& bytes : {std::string("xy"), std::string(100, '\0'), std::string(5'000, '\xFF'),
                                     std::string("SQLite format 2 ") + std::string(5'000, 'x')}) {
        writeFile(file, bytes);
        expectRefused("not a drawing file: it is not an SQLite database");
    }
}

TEST_F(FileRefusal, DatabaseWithAnotherApplicationId_IsRefused)
{
    DrawingSql(file).run("PRAGMA application_id = 4711");
    expectRefused("is a database of another application (its application_id is 4711)");
}

TEST_F(FileRefusal, DatabaseWithoutAnApplicationId_IsRefused)
{
    std::filesystem::remove(file);
    SQLite::Database(file.string(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE).exec("CREATE TABLE t (x)");
    expectRefused("is a database of another application (its application_id is 0)");
}

TEST_F(FileRefusal, NewerFormat_IsRefused)
{
    DrawingSql(file).run("PRAGMA user_version = 3");
    expectRefused("is of format 3; this version reads format 2", Qeapp::eFileTooNew);
}

TEST_F(FileRefusal, UnknownFormat_IsRefused)
{
    DrawingSql(file).run("PRAGMA user_version = 0");
    expectRefused("has an unknown format (its user_version is 0)");
}

/// A change of the schema by SQL, and why the file is then refused.
struct SchemaCase {
    const char* name;
    const char* sql;
    const char* reason;
    friend void PrintTo(const SchemaCase& each, std::ostream* out) { *out << each.name; }
};

class SchemaRefusal : public FileRefusal, public testing::WithParamInterface<SchemaCase> {};

TEST_P(SchemaRefusal, ChangedSchema_IsRefused)
{
    DrawingSql(file).run(GetParam().sql);
    expectRefused(GetParam().reason);
}

const SchemaCase kSchemaCases[] = {
    {"ExtraTable", "CREATE TABLE extra (x)", "extra is not part of its schema"},
    {"ExtraTableWithALongName", "CREATE TABLE \"an extra table whose name is longer than forty bytes\" (x)",
     "an extra table whose name is longer than… is not part of its schema"},
    {"ExtraIndex", "CREATE INDEX extra ON resbufs (code)", "extra is not part of its schema"},
    {"MissingIndex", "DROP INDEX objects_by_owner", "objects_by_owner is missing from its schema"},
    {"IndexOnAnotherColumn", "DROP INDEX objects_by_owner; CREATE INDEX objects_by_owner ON objects (class)",
     "objects_by_owner is not as its schema must be"},
    {"IndexOnAnExpression", "DROP INDEX records_by_table; CREATE INDEX records_by_table ON records (symbol_table + 0)",
     "records_by_table is not as its schema must be"},
    {"TableWithAnotherColumn", "ALTER TABLE records ADD COLUMN more INTEGER", "records is not as its schema must be"},
    {"GeneratedColumn", "ALTER TABLE resbufs ADD COLUMN made INTEGER GENERATED ALWAYS AS (code + 1) VIRTUAL",
     "resbufs is not as its schema must be"},
    {"RenamedTable", "ALTER TABLE resbufs RENAME TO values_of_objects", "resbufs is missing from its schema"},
    {"Trigger", "CREATE TRIGGER extra AFTER DELETE ON resbufs BEGIN DELETE FROM objects; END",
     "extra is not part of its schema"},
    {"View", "CREATE VIEW extra AS SELECT * FROM objects", "extra is not part of its schema"},
    {"ViewWithManyRows",
     "CREATE VIEW extra AS WITH RECURSIVE n(x) AS (SELECT 1 UNION ALL SELECT x + 1 FROM n LIMIT 1000000000000) "
     "SELECT count(*) FROM n",
     "extra is not part of its schema"},
    {"MissingTable", "DROP TABLE resbufs", "resbufs is missing from its schema"},
    {"ViewInPlaceOfATable",
     "DROP TABLE resbufs; CREATE VIEW resbufs AS WITH RECURSIVE n(x) AS (SELECT 1 UNION ALL SELECT x + 1 FROM n "
     "LIMIT 1000000000000) SELECT x AS object, x AS position, 1071 AS code, x AS value, x AS checksum FROM n",
     "resbufs is not as its schema must be"},
};

INSTANTIATE_TEST_SUITE_P(Each, SchemaRefusal, testing::ValuesIn(kSchemaCases), caseName);

TEST_F(FileRefusal, SchemaEntryWithoutATable_IsRefused)
{
    // The definition is valid, but its page does not belong to a table.
    DrawingSql(file).run("PRAGMA writable_schema = ON; UPDATE sqlite_schema SET rootpage = 1 WHERE name = 'resbufs'");
    const std::string before = readFile(file);
    EXPECT_TRUE(loadAll(file).starts_with(refusal(Qeapp::eFileDamaged, "")));
    EXPECT_TRUE(readFile(file) == before);
}

TEST_F(FileRefusal, FileInWriteAheadMode_IsRefused)
{
    std::string bytes = readFile(file);
    bytes[18] = bytes[19] = 2;
    writeFile(file, bytes);
    expectRefused("is in SQLite's write-ahead mode, which drawing files are never in");
}

/// Runs the statements while the index is missing that prevents an object from being listed twice. The restored index
/// does not reflect the change.
std::string withoutIndex(const std::string& sql)
{
    return "CREATE TEMP TABLE whole AS SELECT rowid, * FROM sqlite_schema; PRAGMA writable_schema = ON; "
           "DELETE FROM sqlite_schema WHERE name = 'sqlite_autoindex_entries_1'; "
           "UPDATE sqlite_schema SET sql = replace(sql, 'UNIQUE', '') WHERE name = 'entries'; "
           "PRAGMA writable_schema = RESET; " +
           sql +
           "; PRAGMA writable_schema = ON; DELETE FROM sqlite_schema; "
           "INSERT INTO sqlite_schema (rowid, type, name, tbl_name, rootpage, sql) SELECT * FROM temp.whole; "
           "PRAGMA writable_schema = RESET";
}

/// A row that is invalid although its checksum is valid, and why the drawing is then refused.
struct RowCase {
    const char* name;
    std::string sql;
    std::string reason;
    friend void PrintTo(const RowCase& each, std::ostream* out) { *out << each.name; }
};

class RowRefusal : public FileRefusal, public testing::WithParamInterface<RowCase> {};

TEST_P(RowRefusal, InvalidRow_IsRefused)
{
    changeBySql(file, "PRAGMA foreign_keys = OFF; PRAGMA ignore_check_constraints = ON; " + GetParam().sql);
    expectRefused(GetParam().reason);
}

std::string valueDoesNotFit(int groupCode)
{
    return "object 6: holds a value that does not fit the group code " + std::to_string(groupCode);
}

std::string notOwnedBy(int object, int owner)
{
    return "object " + std::to_string(object) + ": does not belong to object " + std::to_string(owner) +
           ", which lists it";
}

// The drawing's objects: 1 named objects, 2 applications, 3 blocks, 4 model space, 5 the application, 6 the xrecord, 7
// the dictionary, 8 GeoData.
const RowCase kRowCases[] = {
    {"NoVersion", "DELETE FROM header WHERE field = 'drawing version'", "header: drawing version is missing"},
    {"UnknownVersion", "UPDATE header SET value = 34 WHERE field = 'drawing version'",
     "header: there is no drawing version 34"},
    {"NoNextHandle", "DELETE FROM header WHERE field = 'next handle'", "header: next handle is missing"},
    {"NextHandleInUse", "UPDATE header SET value = 8 WHERE field = 'next handle'",
     "header: the next handle is not above that of every object"},
    {"NegativeHandle", "UPDATE header SET value = -1 WHERE field = 'blocks'", "header: blocks is not a handle"},
    {"UnknownHeaderField", "INSERT INTO header VALUES ('more', 1, 0)", "header: unknown field more"},
    {"MissingRoot", "UPDATE header SET value = 99 WHERE field = 'registered applications'", "object 63: is not there"},
    {"RootOfAnotherClass", "UPDATE header SET value = 3 WHERE field = 'registered applications'",
     "object 3: is not the table of registered applications"},
    {"RootWithAnOwner", "UPDATE objects SET owner = 1 WHERE handle = 3", "object 3: is a root and has an owner"},
    {"UnknownClass", "UPDATE objects SET class = 'QeDbCircle' WHERE handle = 6",
     "object 6: is of an unknown class, QeDbCircle"},
    {"DanglingOwner", "UPDATE objects SET owner = 99 WHERE handle = 6", "object 63: is not there"},
    {"NoOwner", "UPDATE objects SET owner = NULL WHERE handle = 6", "object 6: has no owner"},
    {"OwnerOfAnotherClass", "UPDATE objects SET owner = 2 WHERE handle = 6", "object 6: cannot belong to object 2"},
    {"CycleOfOwners",
     "UPDATE objects SET owner = 7 WHERE handle = 7; UPDATE entries SET dictionary = 7 WHERE object = 7; "
     "UPDATE objects SET owner = 7 WHERE handle = 6",
     "object 7: belongs to itself, through its owners"},
    {"CycleOfEntries", "INSERT INTO entries VALUES (7, 'root', 1, 0)", notOwnedBy(1, 7)},
    {"EntryOfAnObjectWithAnotherOwner", "UPDATE entries SET dictionary = 7 WHERE object = 6", notOwnedBy(6, 7)},
    {"EntryOfARoot", "UPDATE entries SET object = 3 WHERE object = 6", notOwnedBy(3, 1)},
    {"EntryOfARecord", withoutIndex("UPDATE entries SET object = 5 WHERE object = 6"), notOwnedBy(5, 1)},
    {"DictionaryThatListsItself", withoutIndex("INSERT INTO entries VALUES (7, 'itself', 7, 0)"), notOwnedBy(7, 7)},
    {"ObjectListedTwice", withoutIndex("INSERT INTO entries VALUES (1, 'again', 6, 0)"), "object 6: is listed twice"},
    {"AnotherObjectAsGeoData", "UPDATE header SET value = 6 WHERE field = 'geo data'",
     "object 6: is not a GeoData object, but the header names it as one"},
    {"EntryOfAMissingObject", "UPDATE entries SET object = 99 WHERE object = 6", "object 63: is not there"},
    {"NumberAsKey", "UPDATE entries SET key = 4711 WHERE object = 6", "entries: a key is not a text"},
    {"EmptyKey", "UPDATE entries SET key = '' WHERE object = 6", "entries: a key is not a text"},
    {"TextOfOddLength", "UPDATE resbufs SET value = x'FFFE41' WHERE position = 0", valueDoesNotFit(300)},
    {"Utf32TextOfOddLength", "UPDATE resbufs SET value = x'FFFE00004100' WHERE position = 0", valueDoesNotFit(300)},
    {"TextWithoutItsMark", "UPDATE resbufs SET value = x'4100' WHERE position = 0", valueDoesNotFit(300)},
    {"TextThatIsNotUtf8", "UPDATE resbufs SET value = CAST(x'FF' AS TEXT) WHERE position = 0", valueDoesNotFit(300)},
    {"TextWithANul", "UPDATE resbufs SET value = 'a' || char(0) WHERE position = 0", valueDoesNotFit(300)},
    {"TextInsteadOfAReal", "UPDATE resbufs SET value = 'x' WHERE position = 1", valueDoesNotFit(1040)},
    {"IntegerInsteadOfAReal", "UPDATE resbufs SET value = 2 WHERE position = 1", valueDoesNotFit(1040)},
    {"BitsOfAnOrdinaryReal", "UPDATE resbufs SET value = x'0000000000000440' WHERE position = 1",
     valueDoesNotFit(1040)},
    {"UnknownGroupCode", "UPDATE resbufs SET code = 299 WHERE position = 0", valueDoesNotFit(299)},
    {"GroupCodeBeyond16Bits", "UPDATE resbufs SET code = 65836 WHERE position = 0", valueDoesNotFit(65836)},
    {"TooLargeSmallInteger", "UPDATE resbufs SET code = 1070, value = 32768 WHERE position = 0", valueDoesNotFit(1070)},
    {"TooLargeInteger", "UPDATE resbufs SET code = 1071, value = 2147483648 WHERE position = 0", valueDoesNotFit(1071)},
    {"TooLongChunk", "UPDATE resbufs SET value = zeroblob(32768) WHERE position = 2", valueDoesNotFit(310)},
    {"MissingValue", "DELETE FROM resbufs WHERE position = 1", "object 6: a value is missing at position 1"},
    {"ValuesOfADictionary", "UPDATE resbufs SET object = 7", "object 7: not all of its values are there"},
    {"MissingName", "DELETE FROM fields WHERE object = 5", "object 5: its name is missing"},
    {"UnknownField", "INSERT INTO fields VALUES (6, 'name', 'x', NULL, 0)",
     "object 6: has a field that its class does not know, name"},
    {"NameThatIsNotText", "UPDATE fields SET value = 1 WHERE object = 5", "object 5: name is not a text"},
    {"FieldWithoutItsReference", "UPDATE fields SET target = NULL, value = 'x' WHERE field = 'block'",
     "object 8: block does not name an object"},
    {"ExtendedDataOfAnotherObject", "UPDATE extended_data SET application = 6",
     "object 1: extended data of 6, which is not a registered application"},
    {"ExtendedDataOfAMissingObject", "UPDATE extended_data SET application = 99",
     "object 1: extended data of 63, which is not a registered application"},
    {"ExtendedDataWithAnXrecordGroupCode", "UPDATE extended_data SET code = 300",
     "object 1: its extended data hold a value that they cannot hold, of the group code 300"},
    {"ExtendedDataWithAnApplicationName", "UPDATE extended_data SET code = 1001",
     "object 1: its extended data hold a value that they cannot hold, of the group code 1001"},
    {"ExtendedDataWithATooLongChunk", "UPDATE extended_data SET code = 1004, value = zeroblob(128)",
     "object 1: its extended data hold a value that they cannot hold, of the group code 1004"},
    {"RecordOfAnotherTable", "UPDATE records SET symbol_table = 3 WHERE object = 5",
     "object 5: belongs to another table than 3"},
};

INSTANTIATE_TEST_SUITE_P(Each, RowRefusal, testing::ValuesIn(kRowCases), caseName);

TEST_F(FileRefusal, TableThatListsAForeignObject_CannotBeOpenedTwice)
{
    changeBySql(file, "INSERT INTO records VALUES (6, 3, 0)");
    const Database database = loadFile();
    for (int attempt = 0; attempt < 2; ++attempt) {
        Orvel::HostObject<QeDbBlockTable> table;
        EXPECT_EQ(table.openWith([&](QeDbBlockTable*& object) { return database->getBlockTable(object); }),
                  Qeapp::eFileDamaged);
    }
    EXPECT_EQ(outcome(Embedded::dumpDrawing(*database)),
              refusal(Qeapp::eFileDamaged, "object 6: belongs to another table than 3"));
}

/// A changed row of each table; each change is in another column.
TEST_F(FileRefusal, RowWithAWrongChecksum_IsRefused)
{
    const std::string sound = readFile(file);
    const std::pair<const char*, const char*> changes[] = {
        {"table header: the row of next handle", "UPDATE header SET value = value + 1 WHERE field = 'next handle'"},
        {"table objects: the row of 2", "UPDATE objects SET details = details + 1 WHERE handle = 2"},
        {"table entries: the row of 1", "UPDATE entries SET key = 'VALUES' WHERE key = 'values'"},
        {"table records: the row of 5", "UPDATE records SET checksum = checksum + 1 WHERE object = 5"},
        {"table fields: the row of 8", "UPDATE fields SET value = 'EPSG:25833' WHERE field = 'coordinate system'"},
        {"table resbufs: the row of 6", "UPDATE resbufs SET value = 2.25 WHERE position = 1"},
        {"table extended_data: the row of 1", "UPDATE extended_data SET value = CAST(value AS BLOB)"},
    };
    for (const auto& [row, sql] : changes) {
        writeFile(file, sound);
        DrawingSql(file).run(sql);
        expectRefused(std::string(row) + " is not as it was written");
    }
}

} // namespace
} // namespace Tests
