#include "host/database/drawing_test.h"

namespace Tests {
namespace {

class ObjectErase : public DrawingTest {};

TEST_F(ObjectErase, ErasedObject_IsOpenedOnlyOnRequest)
{
    const QeDbObjectId id = addXrecord(L"key");
    erase(id);
    EXPECT_EQ(tryOpen(id, QeDb::kForRead), Qeapp::eObjectErased);
    EXPECT_TRUE(open(id, QeDb::kForRead, true)->isErased());
}

TEST_F(ObjectErase, ErasedEntry_IsHiddenByItsDictionary)
{
    const QeDbObjectId id = addXrecord(L"key");
    erase(id);
    const auto dictionary = namedObjects();
    QeDbObjectId found;
    EXPECT_EQ(dictionary->getAt(L"key", found), Qeapp::eKeyNotFound);
    EXPECT_FALSE(dictionary->has(L"key"));
    EXPECT_EQ(dictionary->numEntries(), 0U);
    EXPECT_EQ(keys(), L"");
}

TEST_F(ObjectErase, UnerasedEntry_IsRestored)
{
    const QeDbObjectId id = addXrecord(L"key");
    erase(id);
    erase(id, false);
    EXPECT_EQ(keys(), L"key");
    EXPECT_EQ(contentsOf(id), "300:text");
}

TEST_F(ObjectErase, SecondErase_ChangesNothing)
{
    const QeDbObjectId id = addXrecord(L"key");
    erase(id);
    erase(id);
    erase(id, false);
    EXPECT_EQ(tryOpen(id, QeDb::kForRead), Qeapp::eOk);
}

TEST_F(ObjectErase, UnerasedEntryWhoseKeyIsInUse_StaysDetached)
{
    const QeDbObjectId first = addXrecord(L"key", L"first");
    erase(first);
    const QeDbObjectId second = addXrecord(L"key", L"second");
    erase(first, false);
    QeDbObjectId found;
    EXPECT_EQ(namedObjects()->getAt(L"key", found), Qeapp::eOk);
    EXPECT_EQ(found, second);
    EXPECT_TRUE(open(first)->ownerId().isNull());
}

TEST_F(ObjectErase, RootsAndModelSpace_CannotBeErased)
{
    const QeDbObjectId roots[] = {namedObjects()->objectId(), regAppTable()->objectId(), blockTable()->objectId(),
                                  modelSpace()};
    for (const QeDbObjectId& root : roots)
        EXPECT_EQ(open(root, QeDb::kForWrite)->erase(), Qeapp::eNotApplicable);
}

TEST_F(ObjectErase, ErasedApplication_CannotBeUnerasedWhenItsNameIsInUse)
{
    const QeDbObjectId first = registerApplication(L"APP");
    erase(first);
    registerApplication(L"app");
    EXPECT_EQ(open(first, QeDb::kForWrite, true)->erase(false), Qeapp::eDuplicateKey);
    EXPECT_EQ(tryOpen(first, QeDb::kForRead), Qeapp::eObjectErased);
}

TEST_F(ObjectErase, ErasedGeoData_CannotBeUnerasedWhenAnotherExists)
{
    const QeDbObjectId first = addGeoData();
    erase(first);
    addGeoData();
    EXPECT_EQ(open(first, QeDb::kForWrite, true)->erase(false), Qeapp::eDuplicateKey);
}

} // namespace
} // namespace Tests
