#include "resbuf_dictionary_test.h"

#include "embedded/host/application/application.h"

namespace Tests {
namespace {

TEST_F(ResbufDictionary, MissingDictionary_IsNeitherOpenedForReadNorCreated)
{
    const auto before = contents();
    EXPECT_EQ(dictionary.OpenDictionary(QeDb::kForRead), nullptr);
    EXPECT_EQ(contents(), before);
}

TEST_F(ResbufDictionary, MissingDictionary_IsCreatedForWrite)
{
    const OpenedDictionary opened(dictionary.OpenDictionary(QeDb::kForWrite));
    ASSERT_TRUE(opened);
    EXPECT_TRUE(opened->isWriteEnabled());
    EXPECT_EQ(opened->numEntries(), 0U);
}

TEST_F(ResbufDictionary, MissingDictionaryThatCannotBeAdded_IsNotReturned)
{
    const Embedded::ScopedFault fault({.call = "QeDbDictionary::setAt", .code = Qeapp::eOutOfMemory});
    EXPECT_EQ(dictionary.OpenDictionary(QeDb::kForWrite), nullptr);
}

TEST_F(ResbufDictionary, ExistingDictionary_IsOpenedInTheRequestedMode)
{
    ASSERT_TRUE(set(L"A", kFirst));
    {
        const OpenedDictionary opened(dictionary.OpenDictionary(QeDb::kForRead));
        ASSERT_TRUE(opened);
        EXPECT_FALSE(opened->isWriteEnabled());
    }
    const OpenedDictionary opened(dictionary.OpenDictionary(QeDb::kForWrite));
    ASSERT_TRUE(opened);
    EXPECT_EQ(opened->numEntries(), 1U);
}

TEST_F(ResbufDictionary, Dictionary_IsNeverOpenedForNotification)
{
    ASSERT_TRUE(set(L"A", kFirst));
    Embedded::FaultInjection::watch();
    EXPECT_EQ(dictionary.OpenDictionary(QeDb::kForNotify), nullptr);
    Embedded::FaultInjection::disarm();
    EXPECT_TRUE(Embedded::FaultInjection::seen().empty()) << "nothing is opened for it";
}

TEST_F(ResbufDictionary, ObjectOfAnotherClassUnderTheName_IsIgnoredByReaders)
{
    occupyName();
    const auto before = contents();
    EXPECT_EQ(dictionary.OpenDictionary(QeDb::kForRead), nullptr);
    EXPECT_EQ(dictionary.NewIterator(), nullptr);
    EXPECT_EQ(dictionary.GetEntryCount(), 0);
    EXPECT_EQ(contents(), before);
}

TEST_F(ResbufDictionary, ObjectOfAnotherClassUnderTheName_IsReplacedByWriters)
{
    occupyName();
    EXPECT_TRUE(set(L"A", kFirst));
    EXPECT_EQ(at(L"A"), kFirst);
    EXPECT_EQ(dictionary.GetEntryCount(), 1);
}

TEST_F(ResbufDictionary, ObjectOfAnotherClassThatIsOpenForRead_IsNotReplaced)
{
    occupyName();
    const auto before = contents();
    Orvel::NamedObjects parent;
    ASSERT_EQ(parent.openIn(document.database(), QeDb::kForRead), Qeapp::eOk);
    QeDbObjectId id;
    ASSERT_EQ(parent->getAt(L"NAMES", id), Qeapp::eOk);

    Orvel::HostObject<QeDbXrecord> reader;
    ASSERT_EQ(reader.open(id, QeDb::kForRead), Qeapp::eOk);
    EXPECT_EQ(dictionary.OpenDictionary(QeDb::kForWrite), nullptr);
    reader.reset();
    EXPECT_EQ(contents(), before);
}

TEST_F(ResbufDictionary, ErasedEntry_IsReplacedByWritersAndMissingForReaders)
{
    ASSERT_TRUE(set(L"A", kFirst));
    {
        const Embedded::ScopedFault fault(failing("qedbOpenQeDbObject", Qeapp::eObjectErased));
        EXPECT_EQ(dictionary.OpenDictionary(QeDb::kForRead), nullptr);
    }
    {
        const Embedded::ScopedFault fault(failing("qedbOpenQeDbObject", Qeapp::eObjectErased));
        const OpenedDictionary opened(dictionary.OpenDictionary(QeDb::kForWrite));
        ASSERT_TRUE(opened);
        EXPECT_EQ(opened->numEntries(), 0U) << "a new dictionary";
    }
    EXPECT_EQ(dictionary.GetEntryCount(), 0);
}

TEST_F(ResbufDictionary, FailureToLookUpOrOpen_ReplacesNothing)
{
    ASSERT_TRUE(set(L"A", kFirst));
    const auto before = contents();
    for (const char* const call : {"QeDbDictionary::getAt", "qedbOpenQeDbObject"}) {
        for (const int code : {static_cast<int>(Qeapp::eOpenForRead), kInjectedResult}) {
            const Embedded::ScopedFault fault(failing(call, code));
            EXPECT_EQ(dictionary.OpenDictionary(QeDb::kForWrite), nullptr) << call << ' ' << code;
        }
    }
    EXPECT_EQ(contents(), before);
}

TEST_F(ResbufDictionary, DictionaryThatIsOpenForRead_IsNeitherWrittenNorReplaced)
{
    ASSERT_TRUE(set(L"A", kFirst));
    const OpenedDictionary reader(dictionary.OpenDictionary(QeDb::kForRead));
    EXPECT_FALSE(set(L"A", kSecond));
    EXPECT_EQ(at(L"A"), kFirst);
}

TEST_F(ResbufDictionary, NullDatabase_MeansTheWorkingDatabaseAtConstruction)
{
    const CResbufDictionary working(L"NAMES", nullptr);
    const ScopedDocument later;
    const ResbufChain chain = makeChain(kFirst);
    ASSERT_TRUE(working.SetResbuf(L"A", chain.get(), nullptr));
    EXPECT_EQ(at(L"A"), kFirst);
    EXPECT_FALSE(CResbufDictionary(L"NAMES", nullptr).HasKey(L"A"));
}

TEST_F(ResbufDictionary, Dictionary_CountsItsEntriesAndFindsItsKeys)
{
    EXPECT_EQ(dictionary.GetEntryCount(), 0);
    EXPECT_FALSE(dictionary.HasKey(L"A"));
    ASSERT_TRUE(set(L"A", kFirst));
    ASSERT_TRUE(set(L"B", kSecond));
    EXPECT_EQ(dictionary.GetEntryCount(), 2);
    EXPECT_TRUE(dictionary.HasKey(L"A"));
    EXPECT_FALSE(dictionary.HasKey(L"a"));
}

TEST_F(ResbufDictionary, DictionaryThatIsOpenForRead_IsRead)
{
    ASSERT_TRUE(set(L"A", kFirst));
    const OpenedDictionary reader(dictionary.OpenDictionary(QeDb::kForRead));
    QeDbObjectId id;
    ASSERT_EQ(reader->getAt(L"A", id), Qeapp::eOk);
    Orvel::HostObject<QeDbXrecord> xrecord;
    ASSERT_EQ(xrecord.open(id, QeDb::kForRead), Qeapp::eOk);
    EXPECT_EQ(dictionary.GetEntryCount(), 1);
    EXPECT_TRUE(dictionary.HasKey(L"A"));
    EXPECT_EQ(at(L"A"), kFirst);
    EXPECT_TRUE(Iterator(dictionary.NewIterator()));
}

TEST_F(ResbufDictionary, MissingKey_LeavesTheCallersChain)
{
    ASSERT_TRUE(set(L"A", kFirst));
    resbuf former{};
    resbuf* chain = &former;
    EXPECT_FALSE(dictionary.GetResbuf(L"B", chain));
    EXPECT_EQ(chain, &former);
}

TEST_F(ResbufDictionary, EntryThatIsADictionary_HasNoChain)
{
    setDictionary(L"A");
    EXPECT_EQ(at(L"A"), std::nullopt);
}

TEST_F(ResbufDictionary, SecondChainOfAKey_ReplacesTheFirst)
{
    ASSERT_TRUE(set(L"A", kFirst));
    ASSERT_TRUE(set(L"A", kSecond));
    EXPECT_EQ(dictionary.GetEntryCount(), 1);
    EXPECT_EQ(at(L"A"), kSecond);
}

TEST_F(ResbufDictionary, StoredChain_IsACopy)
{
    const ResbufChain chain = makeChain(kFirst);
    ASSERT_TRUE(dictionary.SetResbuf(L"A", chain.get(), nullptr));
    chain->resval.rstring[0] = L'F';
    EXPECT_EQ(at(L"A"), kFirst);
}

TEST_F(ResbufDictionary, EmptyChain_IsStoredAndRead)
{
    ASSERT_TRUE(set(L"A", {}));
    EXPECT_EQ(at(L"A"), Items());
}

TEST_F(ResbufDictionary, ChainThatTheHostRefuses_ChangesNoEntry)
{
    ASSERT_TRUE(set(L"A", kFirst));
    const ResbufChain chain = makeChain(kFirst);
    chain->restype = 5000;
    EXPECT_FALSE(dictionary.SetResbuf(L"A", chain.get(), nullptr));
    chain->restype = 300;
    EXPECT_EQ(at(L"A"), kFirst);
}

/// Counts the erasures of the object that it is attached to.
struct CountingReactor final : QeDbObjectReactor {
    int erasures = 0;
    void erased(const QeDbObject* object, bool erasing) override { erasures += object != nullptr && erasing ? 1 : 0; }
};

TEST_F(ResbufDictionary, Reactor_IsAttachedToTheNewEntry)
{
    CountingReactor reactor;
    ASSERT_TRUE(set(L"A", kFirst, &reactor));
    ASSERT_TRUE(set(L"A", kSecond)) << "which erases the former entry";
    EXPECT_EQ(reactor.erasures, 1);
}

TEST_F(ResbufDictionary, RemovedKey_IsGone)
{
    ASSERT_TRUE(set(L"A", kFirst));
    ASSERT_TRUE(set(L"B", kSecond));
    EXPECT_TRUE(dictionary.RemoveKey(L"A"));
    EXPECT_FALSE(dictionary.HasKey(L"A"));
    EXPECT_EQ(at(L"B"), kSecond);
    EXPECT_FALSE(dictionary.RemoveKey(L"A"));
}

TEST_F(ResbufDictionary, RemoveAll_RemovesEveryEntryWithoutALock)
{
    ASSERT_TRUE(set(L"A", kFirst));
    setDictionary(L"B");
    ASSERT_TRUE(set(L"C", kSecond));
    const Embedded::ForeignDocumentLock other(document.get());
    EXPECT_TRUE(dictionary.RemoveAll());
    EXPECT_EQ(dictionary.GetEntryCount(), 0);
}

TEST_F(ResbufDictionary, RemoveAll_OfNoEntries_Succeeds)
{
    const auto before = contents();
    EXPECT_TRUE(dictionary.RemoveAll()) << "there is no dictionary";
    EXPECT_EQ(contents(), before) << "none was created";
    ASSERT_TRUE(set(L"A", kFirst));
    ASSERT_TRUE(dictionary.RemoveKey(L"A"));
    EXPECT_TRUE(dictionary.RemoveAll()) << "it is empty";
    Orvel::NamedObjects parent;
    ASSERT_EQ(parent.openIn(document.database(), QeDb::kForRead), Qeapp::eOk);
    const OpenedDictionary reader(dictionary.OpenDictionary(QeDb::kForRead));
    EXPECT_TRUE(dictionary.RemoveAll()) << "an empty dictionary is not opened for write";
}

TEST_F(ResbufDictionary, RemoveAll_KeepsAnObjectOfAnotherClassUnderTheName)
{
    occupyName();
    const auto before = contents();
    EXPECT_TRUE(dictionary.RemoveAll()) << "there is no dictionary";
    EXPECT_EQ(contents(), before);
}

TEST_F(ResbufDictionary, RemoveAll_FailsWhenTheDictionaryCannotBeOpened)
{
    ASSERT_TRUE(set(L"A", kFirst));
    for (const char* const call : {"QeDbDatabase::getNamedObjectsDictionary", "QeDbDictionary::getAt",
                                   "qedbOpenQeDbObject", "QeDbDictionary::newIterator"}) {
        const Embedded::ScopedFault fault(failing(call));
        EXPECT_FALSE(dictionary.RemoveAll()) << call;
    }
    EXPECT_EQ(dictionary.GetEntryCount(), 1);
}

TEST_F(ResbufDictionary, RemoveAll_FailsWhenTheDictionaryCannotBeWritten)
{
    ASSERT_TRUE(set(L"A", kFirst));
    const OpenedDictionary reader(dictionary.OpenDictionary(QeDb::kForRead));
    EXPECT_FALSE(dictionary.RemoveAll());
    EXPECT_TRUE(reader->has(L"A"));
}

TEST_F(ResbufDictionary, UniqueKey_IsThePrefixAndTheFirstFreeNumber)
{
    EXPECT_STREQ(dictionary.MakeUniqueKey(L"ITEM"), L"ITEM0");
    ASSERT_TRUE(set(L"ITEM0", kFirst));
    ASSERT_TRUE(set(L"ITEM1", kFirst));
    EXPECT_STREQ(dictionary.MakeUniqueKey(L"ITEM"), L"ITEM2");
    EXPECT_STREQ(dictionary.MakeUniqueKey(L""), L"0");
}

TEST_F(ResbufDictionary, UniqueKey_CutsALongPrefixToFitTheNumber)
{
    const std::wstring prefix = L"abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMN";
    ASSERT_EQ(prefix.size(), 40U);
    EXPECT_EQ(std::wstring(dictionary.MakeUniqueKey(prefix.c_str())), prefix.substr(0, 30) + L"0");
    for (wchar_t digit = L'0'; digit <= L'9'; ++digit)
        ASSERT_TRUE(set((prefix.substr(0, 30) + digit).c_str(), kFirst));
    EXPECT_EQ(std::wstring(dictionary.MakeUniqueKey(prefix.c_str())), prefix.substr(0, 29) + L"10");
    EXPECT_EQ(std::wstring(dictionary.MakeUniqueKey(prefix.substr(0, 31).c_str())), prefix.substr(0, 29) + L"10");
}

TEST_F(ResbufDictionary, UniqueKeys_ShareOneBuffer)
{
    const wchar_t* const first = dictionary.MakeUniqueKey(L"A");
    EXPECT_EQ(dictionary.MakeUniqueKey(L"B"), first);
    EXPECT_STREQ(first, L"B0");
}

} // namespace
} // namespace Tests
