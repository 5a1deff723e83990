// The order and the arguments of the host calls of dictionaries of xrecords, and the objects that are open during them.
#include "embedded/diagnostics/resource_counters.h"
#include "resbuf_dictionary_test.h"

namespace Tests {
namespace {

long countHeld(Embedded::ResourceKind kind)
{
    return Embedded::ResourceCounters::now()[kind];
}

/// Forwards to the host's manager and records the calls.
class RecordingDocumentManager final : public QeApDocManager {
public:
    struct Lock {
        QeApDocument* document;
        QeAp::DocLockMode mode;
        const wchar_t* globalCommandName;
        const wchar_t* localCommandName;
        bool prompt;
        friend bool operator==(const Lock&, const Lock&) = default;
    };

    QeApDocument* curDocument() const override { return host_->curDocument(); }
    Qeapp::ErrorStatus lockDocument(QeApDocument* document, QeAp::DocLockMode mode, const wchar_t* globalCommandName,
                                    const wchar_t* localCommandName, bool prompt) override
    {
        locks.push_back({document, mode, globalCommandName, localCommandName, prompt});
        return host_->lockDocument(document, mode, globalCommandName, localCommandName, prompt);
    }
    Qeapp::ErrorStatus unlockDocument(QeApDocument* document) override
    {
        openAtUnlocking.push_back(countHeld(Embedded::ResourceKind::openObject));
        return host_->unlockDocument(document);
    }

    std::vector<Lock> locks;
    std::vector<long> openAtUnlocking;

private:
    QeApDocManager* host_ = qeDocManager();
};

class ResbufDictionaryOrder : public ResbufDictionary {
protected:
    RecordingDocumentManager manager;
    const ScopedHostParts parts{{.otherDocumentManager = &manager}};
    const RecordingDocumentManager::Lock expectedLock{document.get(), QeAp::kWrite, nullptr, nullptr, true};
};

TEST_F(ResbufDictionaryOrder, SetResbuf_LocksTheCurrentDocumentOnceForWriteWithPrompt)
{
    ASSERT_TRUE(set(L"A", kFirst));
    EXPECT_EQ(manager.locks, std::vector{expectedLock});
}

TEST_F(ResbufDictionaryOrder, RemoveKey_LocksTheCurrentDocumentOnceForWriteWithPrompt)
{
    ASSERT_TRUE(set(L"A", kFirst));
    manager.locks.clear();
    ASSERT_TRUE(dictionary.RemoveKey(L"A"));
    EXPECT_EQ(manager.locks, std::vector{expectedLock});
}

TEST_F(ResbufDictionaryOrder, EveryObject_IsClosedBeforeTheDocumentIsUnlocked)
{
    ASSERT_TRUE(set(L"A", kFirst));
    ASSERT_TRUE(set(L"A", kSecond));
    ASSERT_TRUE(dictionary.RemoveKey(L"A"));
    EXPECT_FALSE(dictionary.RemoveKey(L"A"));
    EXPECT_EQ(manager.openAtUnlocking, (std::vector<long>{0, 0, 0, 0}));
}

TEST_F(ResbufDictionaryOrder, DocumentThatCannotBeLocked_KeepsTheKeyAndIsNotUnlocked)
{
    ASSERT_TRUE(set(L"A", kFirst));
    manager.openAtUnlocking.clear();
    const Embedded::ScopedFault fault({.call = "QeApDocManager::lockDocument"});
    EXPECT_FALSE(dictionary.RemoveKey(L"A"));
    EXPECT_EQ(at(L"A"), kFirst);
    EXPECT_TRUE(manager.openAtUnlocking.empty());
}

TEST_F(ResbufDictionaryOrder, DictionaryThatCannotBeOpened_KeepsTheKey)
{
    ASSERT_TRUE(set(L"A", kFirst));
    const OpenedDictionary reader(dictionary.OpenDictionary(QeDb::kForRead));
    ASSERT_TRUE(reader);
    EXPECT_FALSE(dictionary.RemoveKey(L"A"));
    EXPECT_TRUE(reader->has(L"A"));
}

TEST_F(ResbufDictionaryOrder, Reactor_IsAttachedAfterTheEntryIsInTheDictionary)
{
    QeDbObjectReactor reactor;
    std::vector<long> attached;
    Embedded::FaultInjection::watch([&](std::string_view call) {
        if (call == "QeDbDictionary::setAt")
            attached.push_back(countHeld(Embedded::ResourceKind::objectReactor));
    });
    ASSERT_TRUE(set(L"A", kFirst, &reactor));
    Embedded::FaultInjection::disarm();
    ASSERT_FALSE(attached.empty());
    EXPECT_EQ(attached, std::vector<long>(attached.size(), 0));
    EXPECT_EQ(countHeld(Embedded::ResourceKind::objectReactor), 1);
    ASSERT_TRUE(dictionary.RemoveKey(L"A"));
}

TEST_F(ResbufDictionaryOrder, Iterator_KeepsNothingOpen)
{
    ASSERT_TRUE(set(L"A", kFirst));
    const Iterator entry(dictionary.NewIterator());
    ASSERT_TRUE(entry);
    EXPECT_EQ(countHeld(Embedded::ResourceKind::openObject), 0);
    EXPECT_TRUE(set(L"B", kSecond)) << "nobody has the dictionary open";
}

TEST_F(ResbufDictionaryOrder, FailingLookUp_CreatesNoDictionary)
{
    const auto before = contents();
    for (const int code : {3, 21, 23, 31}) {
        const Embedded::ScopedFault fault({.call = "QeDbDictionary::getAt", .code = code});
        EXPECT_EQ(dictionary.OpenDictionary(QeDb::kForWrite), nullptr) << code;
    }
    EXPECT_EQ(contents(), before);
}

} // namespace
} // namespace Tests
