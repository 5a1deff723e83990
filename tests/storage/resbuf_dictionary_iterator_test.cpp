#include "resbuf_dictionary_test.h"

namespace Tests {
namespace {

TEST_F(ResbufDictionary, Iterator_WalksTheEntriesInTheHostsOrder)
{
    ASSERT_TRUE(set(L"B", kSecond));
    setDictionary(L"C");
    ASSERT_TRUE(set(L"A", kFirst));
    const Iterator entry(dictionary.NewIterator());
    ASSERT_TRUE(entry);
    ResbufChain chain;
    EXPECT_STREQ(entry->GetKey(), L"A");
    ASSERT_TRUE(entry->GetResbuf(chain.put()));
    EXPECT_EQ(readChain(chain.get()), kFirst);
    entry->Next();
    EXPECT_STREQ(entry->GetKey(), L"B");
    EXPECT_FALSE(entry->Done());
    entry->Next();
    resbuf former{};
    resbuf* untouched = &former;
    EXPECT_FALSE(entry->GetResbuf(untouched)) << "a dictionary has no chain";
    EXPECT_EQ(untouched, &former);
    entry->Next();
    EXPECT_TRUE(entry->Done());
    EXPECT_FALSE(entry->GetResbuf(untouched)) << "there is no entry any more";
}

TEST_F(ResbufDictionary, Iterator_ReturnsTheEntrysIdAndSetsTheArgument)
{
    ASSERT_TRUE(set(L"A", kFirst));
    const Iterator entry(dictionary.NewIterator());
    QeDbObjectId id;
    EXPECT_EQ(entry->GetObjectId(id), id);
    Orvel::HostObject<QeDbXrecord> xrecord;
    EXPECT_EQ(xrecord.open(id, QeDb::kForRead), Qeapp::eOk);
}

TEST_F(ResbufDictionary, Iterator_IsNullWithoutADictionary)
{
    const auto before = contents();
    EXPECT_EQ(dictionary.NewIterator(), nullptr);
    EXPECT_EQ(contents(), before);
}

TEST_F(ResbufDictionary, EntryThatIsOpenForWrite_HasNoChainForReaders)
{
    ASSERT_TRUE(set(L"A", kFirst));
    const Iterator entry(dictionary.NewIterator());
    QeDbObjectId id;
    Orvel::HostObject<QeDbXrecord> writer;
    ASSERT_EQ(writer.open(entry->GetObjectId(id), QeDb::kForWrite), Qeapp::eOk);
    ResbufChain chain;
    EXPECT_FALSE(entry->GetResbuf(chain.put()));
}

TEST_F(ResbufDictionary, EveryFailingCallOfNewIterator_GivesNoIterator)
{
    ASSERT_TRUE(set(L"A", kFirst));
    for (const FallibleCall& call : recordFallibleCalls([&] { ASSERT_TRUE(Iterator(dictionary.NewIterator())); })) {
        SCOPED_TRACE(call.name);
        const Embedded::ScopedFault fault(failing(call));
        EXPECT_EQ(Iterator(dictionary.NewIterator()) != nullptr, failureChangesNoResult(call));
    }
}

} // namespace
} // namespace Tests
