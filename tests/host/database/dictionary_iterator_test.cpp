#include "embedded/diagnostics/resource_counters.h"
#include "host/database/drawing_test.h"

namespace Tests {
namespace {

class DictionaryIterator : public DrawingTest {
protected:
    std::unique_ptr<QeDbDictionaryIterator> walk()
    {
        return std::unique_ptr<QeDbDictionaryIterator>(namedObjects()->newIterator());
    }
};

TEST_F(DictionaryIterator, Entries_AreOrderedByTheirKeys)
{
    for (const wchar_t* key : {L"b", L"a", L"\u00e4", L"B", L"ab"})
        addXrecord(key);
    EXPECT_EQ(keys(), L"B a ab b \u00e4");
}

TEST_F(DictionaryIterator, IteratorOverAnEmptyDictionary_IsDone)
{
    const auto iterator = walk();
    EXPECT_TRUE(iterator->done());
    EXPECT_FALSE(iterator->next());
    EXPECT_STREQ(iterator->name(), L"");
    EXPECT_TRUE(iterator->objectId().isNull());
    QeDbObject* object = nullptr;
    EXPECT_EQ(iterator->getObject(object), Qeapp::eNullObjectId);
}

TEST_F(DictionaryIterator, Next_IsFalseAtTheEnd)
{
    addXrecord(L"a");
    addXrecord(L"b");
    const auto iterator = walk();
    EXPECT_TRUE(iterator->next());
    EXPECT_FALSE(iterator->next());
    EXPECT_TRUE(iterator->done());
}

TEST_F(DictionaryIterator, Iterator_ReturnsTheEntriesOfItsCreation)
{
    const QeDbObjectId removed = addXrecord(L"a");
    const auto iterator = walk();
    EXPECT_EQ(namedObjects(QeDb::kForWrite)->remove(removed), Qeapp::eOk);
    addXrecord(L"b");
    EXPECT_EQ(iterator->objectId(), removed);
    EXPECT_FALSE(iterator->next());
}

TEST_F(DictionaryIterator, GetObject_OpensTheEntry)
{
    const QeDbObjectId id = addXrecord(L"a");
    const auto iterator = walk();
    QeDbObject* object = nullptr;
    ASSERT_EQ(iterator->getObject(object, QeDb::kForWrite), Qeapp::eOk);
    EXPECT_EQ(Opened<QeDbObject>(object)->objectId(), id);
}

TEST_F(DictionaryIterator, Iterator_IsCountedAndKeepsNothingOpen)
{
    using Embedded::ResourceCounters;
    using Embedded::ResourceKind;
    const auto before = ResourceCounters::now();
    const auto iterator = walk();
    EXPECT_EQ(ResourceCounters::difference(before, ResourceCounters::now()), "1 dictionary iterator");
}

} // namespace
} // namespace Tests
