#include "embedded/diagnostics/resource_counters.h"
#include "host/database/drawing_test.h"

namespace Tests {
namespace {

using Embedded::ResourceCounters;
using Embedded::ResourceKind;

class ObjectOpen : public DrawingTest {
protected:
    QeDbObjectId xrecord = addXrecord(L"key");
};

TEST_F(ObjectOpen, Readers_ShareOneObject)
{
    const auto first = open(xrecord);
    const auto second = open(xrecord);
    EXPECT_EQ(first.get(), second.get());
}

TEST_F(ObjectOpen, ObjectOpenForWrite_CannotBeOpenedAgain)
{
    const auto writer = open(xrecord, QeDb::kForWrite);
    EXPECT_EQ(tryOpen(xrecord, QeDb::kForRead), Qeapp::eOpenForWrite);
    EXPECT_EQ(tryOpen(xrecord, QeDb::kForWrite), Qeapp::eOpenForWrite);
}

TEST_F(ObjectOpen, ObjectOpenForRead_CannotBeOpenedForWrite)
{
    const auto reader = open(xrecord);
    EXPECT_EQ(tryOpen(xrecord, QeDb::kForWrite), Qeapp::eOpenForRead);
}

TEST_F(ObjectOpen, ClosedObject_CanBeOpenedAgain)
{
    open(xrecord, QeDb::kForWrite).close();
    EXPECT_EQ(tryOpen(xrecord, QeDb::kForWrite), Qeapp::eOk);
}

TEST_F(ObjectOpen, NotifyMode_IsNotApplicable)
{
    EXPECT_EQ(tryOpen(xrecord, QeDb::kForNotify), Qeapp::eNotApplicable);
}

TEST_F(ObjectOpen, NullId_IsRefused)
{
    EXPECT_EQ(tryOpen(QeDbObjectId(), QeDb::kForRead), Qeapp::eNullObjectId);
}

TEST_F(ObjectOpen, AnotherClass_IsRefusedAndClosed)
{
    QeDbDictionary* dictionary = nullptr;
    EXPECT_EQ(qedbOpenObject(dictionary, xrecord, QeDb::kForWrite), Qeapp::eNotThatKindOfClass);
    EXPECT_EQ(dictionary, nullptr);
    EXPECT_EQ(tryOpen(xrecord, QeDb::kForWrite), Qeapp::eOk);
}

TEST_F(ObjectOpen, BaseClass_IsAccepted)
{
    const auto table = regAppTable();
    EXPECT_TRUE(open<QeDbSymbolTable>(table->objectId()));
}

TEST_F(ObjectOpen, SingleReader_CanUpgrade)
{
    const auto reader = open(xrecord);
    EXPECT_EQ(reader->upgradeOpen(), Qeapp::eOk);
    EXPECT_TRUE(reader->isWriteEnabled());
    EXPECT_EQ(tryOpen(xrecord, QeDb::kForRead), Qeapp::eOpenForWrite);
}

TEST_F(ObjectOpen, OneOfTwoReaders_CannotUpgrade)
{
    const auto first = open(xrecord);
    const auto second = open(xrecord);
    EXPECT_EQ(first->upgradeOpen(), Qeapp::eOpenForRead);
    EXPECT_FALSE(first->isWriteEnabled());
}

TEST_F(ObjectOpen, Writer_CannotUpgradeAgain)
{
    EXPECT_EQ(open(xrecord, QeDb::kForWrite)->upgradeOpen(), Qeapp::eOpenForWrite);
}

TEST_F(ObjectOpen, DowngradedWriter_AllowsReaders)
{
    const auto writer = open(xrecord, QeDb::kForWrite);
    EXPECT_EQ(writer->downgradeOpen(), Qeapp::eOk);
    EXPECT_FALSE(writer->isWriteEnabled());
    EXPECT_TRUE(writer->isReadEnabled());
    EXPECT_EQ(tryOpen(xrecord, QeDb::kForRead), Qeapp::eOk);
}

TEST_F(ObjectOpen, Reader_CannotDowngrade)
{
    EXPECT_EQ(open(xrecord)->downgradeOpen(), Qeapp::eNotOpenForWrite);
}

TEST_F(ObjectOpen, EveryOpen_IsCountedUntilItsClose)
{
    const long before = ResourceCounters::now()[ResourceKind::openObject];
    auto first = open(xrecord);
    auto second = open(xrecord);
    EXPECT_EQ(ResourceCounters::now()[ResourceKind::openObject], before + 2);
    first.close();
    EXPECT_EQ(ResourceCounters::now()[ResourceKind::openObject], before + 1);
}

TEST_F(ObjectOpen, CloseWithoutOpen_IsRefused)
{
    auto reader = open(xrecord);
    QeDbObject* object = reader.get();
    reader.close();
    EXPECT_EQ(object->close(), Qeapp::eNotOpenForRead);
}

TEST_F(ObjectOpen, WriteThroughAReader_IsRefused)
{
    const auto reader = open<QeDbXrecord>(xrecord);
    EXPECT_EQ(reader->setFromRbChain(nullptr), Qeapp::eNotOpenForWrite);
    EXPECT_EQ(reader->erase(), Qeapp::eNotOpenForWrite);
    EXPECT_EQ(contentsOf(xrecord), "300:text");
}

TEST_F(ObjectOpen, NewObject_BelongsToItsCreator)
{
    const auto object = std::make_unique<QeDbXrecord>();
    EXPECT_TRUE(object->objectId().isNull());
    EXPECT_TRUE(object->ownerId().isNull());
    EXPECT_EQ(object->database(), nullptr);
    EXPECT_TRUE(object->isWriteEnabled());
    EXPECT_EQ(object->close(), Qeapp::eNotInDatabase);
    EXPECT_EQ(object->upgradeOpen(), Qeapp::eNotInDatabase);
    EXPECT_EQ(object->downgradeOpen(), Qeapp::eNotInDatabase);
    EXPECT_EQ(object->erase(), Qeapp::eNotInDatabase);
}

TEST_F(ObjectOpen, ResidentObject_ReturnsItsDatabaseAndOwner)
{
    const auto reader = open(xrecord);
    EXPECT_EQ(reader->objectId(), xrecord);
    EXPECT_EQ(reader->database(), &database);
    EXPECT_EQ(reader->ownerId(), namedObjects()->objectId());
}

TEST_F(ObjectOpen, Handles_AreConsecutiveNumbers)
{
    EXPECT_EQ(QeDbObjectId().handle(), 0U);
    EXPECT_EQ(addXrecord(L"other").handle(), xrecord.handle() + 1);
}

TEST_F(ObjectOpen, ObjectDeletedWhileOpen_IsUnknownAfterwards)
{
    QeDbObject* writer = nullptr;
    ASSERT_EQ(qedbOpenQeDbObject(writer, xrecord, QeDb::kForWrite), Qeapp::eOk);
    delete writer; // a client's mistake, which must not damage the drawing
    EXPECT_EQ(tryOpen(xrecord, QeDb::kForRead), Qeapp::eUnknownObjectId);
    EXPECT_FALSE(namedObjects()->has(L"key"));
    ResourceCounters::remove(ResourceKind::openObject); // the object was never closed
}

TEST_F(ObjectOpen, DrawingClosedWithObjectsOpen_ReleasesThemAndKeepsTheCount)
{
    const long before = ResourceCounters::now()[ResourceKind::openObject];
    {
        QeDbDatabase other;
        QeDbDictionary* dictionary = nullptr;
        ASSERT_EQ(other.getNamedObjectsDictionary(dictionary, QeDb::kForWrite), Qeapp::eOk);
        ASSERT_NE(other.transactionManager()->startTransaction(), nullptr);
    }
    EXPECT_EQ(ResourceCounters::now()[ResourceKind::openObject], before + 1)
        << "the counters must show what a client forgot to close";
    ResourceCounters::remove(ResourceKind::openObject);
    ResourceCounters::remove(ResourceKind::transaction);
}

} // namespace
} // namespace Tests
