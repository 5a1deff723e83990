#include "host/database/drawing_test.h"

namespace Tests {
namespace {

class SymbolTable : public DrawingTest {};

TEST_F(SymbolTable, NewDrawing_HasModelSpaceAndNoApplications)
{
    QeDbObjectId id;
    EXPECT_EQ(blockTable()->getAt(kQeDbModelSpaceName, id), Qeapp::eOk);
    EXPECT_EQ(id, modelSpace());
    EXPECT_FALSE(regAppTable()->has(L"KTN"));
    EXPECT_STREQ(open<QeDbBlockTableRecord>(id)->getName(), L"*Model_Space");
}

TEST_F(SymbolTable, AddedRecord_IsFoundInAnyCase)
{
    const QeDbObjectId added = registerApplication(L"Ktn_Projection");
    QeDbObjectId id;
    EXPECT_EQ(regAppTable()->getAt(L"KTN_PROJECTION", id), Qeapp::eOk);
    EXPECT_EQ(id, added);
    EXPECT_TRUE(regAppTable()->has(L"ktn_projection"));
    EXPECT_EQ(open(added)->ownerId(), regAppTable()->objectId());
    EXPECT_STREQ(open<QeDbRegAppTableRecord>(added)->getName(), L"Ktn_Projection");
}

TEST_F(SymbolTable, AddedRecord_StaysOpenForWrite)
{
    auto* record = new QeDbRegAppTableRecord;
    ASSERT_EQ(record->setName(L"KTN"), Qeapp::eOk);
    QeDbObjectId id;
    ASSERT_EQ(regAppTable(QeDb::kForWrite)->add(id, record), Qeapp::eOk);
    const Opened<QeDbRegAppTableRecord> opened(record);
    EXPECT_TRUE(opened->isWriteEnabled());
}

TEST_F(SymbolTable, RefusedRecord_StaysWithTheCaller)
{
    registerApplication(L"KTN");
    QeDbObjectId id = modelSpace();
    QeDbRegAppTableRecord record;
    EXPECT_EQ(regAppTable(QeDb::kForWrite)->add(id, &record), Qeapp::eInvalidKey);
    EXPECT_TRUE(id.isNull());
    ASSERT_EQ(record.setName(L"ktn"), Qeapp::eOk);
    EXPECT_EQ(regAppTable(QeDb::kForWrite)->add(id, &record), Qeapp::eDuplicateKey);
    EXPECT_EQ(regAppTable()->add(id, &record), Qeapp::eNotOpenForWrite);
    EXPECT_EQ(regAppTable(QeDb::kForWrite)->add(id, nullptr), Qeapp::eInvalidInput);
    QeDbRegAppTable homeless;
    EXPECT_EQ(homeless.add(id, &record), Qeapp::eNotInDatabase);
    EXPECT_TRUE(record.objectId().isNull());
}

TEST_F(SymbolTable, ResidentRecord_CannotBeAddedAgain)
{
    const auto record = open<QeDbRegAppTableRecord>(registerApplication(L"KTN"), QeDb::kForWrite);
    QeDbObjectId id;
    EXPECT_EQ(regAppTable(QeDb::kForWrite)->add(id, record.get()), Qeapp::eAlreadyInDatabase);
}

TEST_F(SymbolTable, MissingRecord_IsNotFound)
{
    QeDbObjectId id = modelSpace();
    EXPECT_EQ(regAppTable()->getAt(L"KTN", id), Qeapp::eKeyNotFound);
    EXPECT_TRUE(id.isNull());
    EXPECT_EQ(regAppTable()->getAt(nullptr, id), Qeapp::eInvalidKey);
    EXPECT_FALSE(regAppTable()->has(nullptr));
}

TEST_F(SymbolTable, Names_AreNeverNullOrEmpty)
{
    QeDbRegAppTableRecord record;
    EXPECT_EQ(record.setName(nullptr), Qeapp::eInvalidInput);
    EXPECT_EQ(record.setName(L""), Qeapp::eInvalidInput);
    EXPECT_STREQ(record.getName(), L"");
}

TEST_F(SymbolTable, RenamedRecord_IsFoundOnlyUnderItsNewName)
{
    const QeDbObjectId id = registerApplication(L"OLD");
    EXPECT_EQ(open<QeDbRegAppTableRecord>(id, QeDb::kForWrite)->setName(L"NEW"), Qeapp::eOk);
    EXPECT_FALSE(regAppTable()->has(L"OLD"));
    EXPECT_TRUE(regAppTable()->has(L"NEW"));
}

TEST_F(SymbolTable, RenameToAnExistingName_IsRefused)
{
    registerApplication(L"TAKEN");
    const auto record = open<QeDbRegAppTableRecord>(registerApplication(L"MINE"), QeDb::kForWrite);
    EXPECT_EQ(record->setName(L"Taken"), Qeapp::eDuplicateKey);
    EXPECT_EQ(record->setName(L"mine"), Qeapp::eOk) << "a record may change the case of its own name";
    EXPECT_STREQ(record->getName(), L"mine");
}

TEST_F(SymbolTable, RenameThroughAReader_IsRefused)
{
    const auto record = open<QeDbRegAppTableRecord>(registerApplication(L"OLD"));
    EXPECT_EQ(record->setName(L"NEW"), Qeapp::eNotOpenForWrite);
}

TEST_F(SymbolTable, ModelSpace_KeepsItsName)
{
    EXPECT_EQ(open<QeDbBlockTableRecord>(modelSpace(), QeDb::kForWrite)->setName(L"other"), Qeapp::eNotApplicable);
}

TEST_F(SymbolTable, NameOfAnErasedRecord_CanBeUsedAgain)
{
    erase(registerApplication(L"KTN"));
    EXPECT_FALSE(regAppTable()->has(L"KTN"));
    registerApplication(L"KTN");
    EXPECT_TRUE(regAppTable()->has(L"KTN"));
}

TEST_F(SymbolTable, ModelSpaceOfANullDatabase_IsNull)
{
    QeDbObjectId id = modelSpace();
    EXPECT_EQ(qedbSymUtil()->blockModelSpaceId(nullptr, id), Qeapp::eInvalidInput);
    EXPECT_TRUE(id.isNull());
}

} // namespace
} // namespace Tests
