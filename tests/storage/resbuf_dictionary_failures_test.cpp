// Dictionaries that are missing or must not be written, and every call that can fail.
#include <algorithm>

#include "embedded/host/application/application.h"
#include "resbuf_dictionary_test.h"

namespace Tests {
namespace {

TEST_F(ResbufDictionary, DictionaryWithoutADatabase_IsEmptyAndStoresNothing)
{
    const ScopedHostParts shutdown({.applicationServices = false});
    const CResbufDictionary none(L"NAMES", nullptr);
    ResbufChain chain;
    EXPECT_EQ(none.OpenDictionary(QeDb::kForRead), nullptr);
    EXPECT_EQ(none.OpenDictionary(QeDb::kForWrite), nullptr);
    EXPECT_EQ(none.NewIterator(), nullptr);
    EXPECT_EQ(none.GetEntryCount(), 0);
    EXPECT_FALSE(none.GetResbuf(L"A", chain.put()));
    EXPECT_FALSE(none.SetResbuf(L"A", makeChain(kFirst).get(), nullptr));
    EXPECT_FALSE(none.RemoveKey(L"A"));
    EXPECT_TRUE(none.RemoveAll());
}

TEST_F(ResbufDictionary, DocumentThatAnotherClientLocked_IsNotWritten)
{
    ASSERT_TRUE(set(L"A", kFirst));
    const auto before = contents();
    const Embedded::ForeignDocumentLock other(document.get());
    EXPECT_FALSE(set(L"A", kSecond));
    EXPECT_FALSE(dictionary.RemoveKey(L"A"));
    EXPECT_EQ(contents(), before);
    EXPECT_EQ(at(L"A"), kFirst) << "readers lock nothing";
}

TEST_F(ResbufDictionary, Writing_LocksTheCurrentDocumentForWriteAndUnlocksIt)
{
    const QeAp::DocLockMode before = document.get()->lockMode();
    const ResbufChain chain = makeChain(kFirst);
    Embedded::FaultInjection::watch();
    ASSERT_TRUE(dictionary.SetResbuf(L"A", chain.get(), nullptr));
    Embedded::FaultInjection::disarm();
    EXPECT_EQ(Embedded::FaultInjection::seen().front(), "QeApDocManager::lockDocument");
    EXPECT_EQ(document.get()->lockMode(), before);
}

TEST_F(ResbufDictionary, WithoutADocumentManager_NothingIsWritten)
{
    const auto before = contents();
    const ScopedHostParts parts({.documentManager = false});
    EXPECT_FALSE(set(L"A", kFirst));
    EXPECT_FALSE(dictionary.RemoveKey(L"A"));
    EXPECT_EQ(contents(), before);
}

TEST_F(ResbufDictionary, RemoveAll_ContinuesAfterAFailure)
{
    ASSERT_TRUE(set(L"A", kFirst));
    ASSERT_TRUE(set(L"B", kSecond));
    ASSERT_TRUE(set(L"C", kSecond));
    {
        const Embedded::ScopedFault fault({.call = "QeDbDictionary::remove", .occurrence = 2});
        EXPECT_FALSE(dictionary.RemoveAll());
    }
    EXPECT_EQ(dictionary.GetEntryCount(), 1);
    EXPECT_TRUE(dictionary.HasKey(L"B"));
}

TEST_F(ResbufDictionary, EveryFailingCallOfWriting_KeepsTheEarlierEntry)
{
    ASSERT_TRUE(set(L"A", kFirst));
    const ResbufChain chain = makeChain(kSecond);
    const auto calls = recordFallibleCalls([&] { ASSERT_TRUE(dictionary.SetResbuf(L"A", chain.get(), nullptr)); });
    ASSERT_GE(calls.size(), 5U);
    ASSERT_TRUE(set(L"A", kFirst));
    for (const FallibleCall& call : calls) {
        SCOPED_TRACE(call.name);
        const Embedded::ScopedFault fault(failing(call));
        const bool stored = dictionary.SetResbuf(L"A", chain.get(), nullptr);
        Embedded::FaultInjection::disarm();
        EXPECT_EQ(stored, failureChangesNoResult(call));
        EXPECT_EQ(at(L"A"), stored ? kSecond : kFirst);
        ASSERT_TRUE(set(L"A", kFirst));
    }
}

TEST_F(ResbufDictionary, EveryFailingCallOfTheFirstWrite_AllowsTheNextWrite)
{
    const auto calls = recordFallibleCalls([&] { ASSERT_TRUE(set(L"A", kFirst)); });
    for (const FallibleCall& call : calls) {
        SCOPED_TRACE(call.name);
        const ScopedDocument fresh;
        const CResbufDictionary first(L"NAMES", fresh.database());
        const ResbufChain chain = makeChain(kFirst);
        const Embedded::ScopedFault fault(failing(call));
        const bool stored = first.SetResbuf(L"A", chain.get(), nullptr);
        Embedded::FaultInjection::disarm();
        EXPECT_EQ(first.HasKey(L"A"), stored);
        EXPECT_TRUE(first.SetResbuf(L"A", chain.get(), nullptr)) << "the next one is not hindered";
    }
}

TEST_F(ResbufDictionary, DictionaryThatCannotBeCreated_IsNotAdded)
{
    const ResbufChain chain = makeChain(kFirst);
    for (const char* const call : {"QeDbObject::upgradeOpen", "qeHeapAlloc"}) {
        const Embedded::ScopedFault fault(failing(call));
        EXPECT_FALSE(dictionary.SetResbuf(L"A", chain.get(), nullptr)) << call;
        const std::vector<std::string>& seen = Embedded::FaultInjection::seen();
        EXPECT_EQ(std::count(seen.begin(), seen.end(), call), 1);
        EXPECT_EQ(std::count(seen.begin(), seen.end(), "QeDbDictionary::setAt"), 0) << call;
    }
}

TEST_F(ResbufDictionary, EveryFailingCallOfReading_GivesNoChain)
{
    ASSERT_TRUE(set(L"A", kFirst));
    for (const FallibleCall& call : recordFallibleCalls([&] { ASSERT_EQ(at(L"A"), kFirst); })) {
        SCOPED_TRACE(call.name);
        const Embedded::ScopedFault fault(failing(call));
        EXPECT_EQ(at(L"A"), failureChangesNoResult(call) ? std::optional(kFirst) : std::nullopt);
    }
}

} // namespace
} // namespace Tests
