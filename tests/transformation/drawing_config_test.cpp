#include "transformation/drawing_config.h"

#include "embedded/host/application/application.h"
#include "storage/failing_calls.h"
#include "transformation_test.h"

namespace Tests {
namespace {

class DrawingConfig : public TransformationTest {
protected:
    static ReadText read() { return readWith(Orvel::ReadDrawingTransformationConfig); }
    static bool write(const std::wstring& text) { return Orvel::WriteDrawingTransformationConfig(text.c_str()); }

    std::optional<Items> storedChain(const wchar_t* key) const
    {
        const Orvel::CResbufDictionary dictionary(L"ORVEL_CS_TRANSFORMATION_CONFIG", document.database());
        Orvel::ResbufChain chain;
        return dictionary.GetResbuf(key, chain.put()) ? std::optional(readChain(chain.get())) : std::nullopt;
    }
};

TEST_F(DrawingConfig, DrawingWithoutConfiguration_ReadsAsNothingAndIsUnchanged)
{
    const auto before = contents();
    EXPECT_EQ(read(), kNothingRead);
    EXPECT_EQ(contents(), before);
}

TEST_F(DrawingConfig, MissingText_IsAlwaysTheSameEmptyText)
{
    wchar_t* first = nullptr;
    wchar_t* second = nullptr;
    EXPECT_FALSE(Orvel::ReadDrawingTransformationConfig(first));
    EXPECT_FALSE(Orvel::ReadDrawingTransformationConfig(second));
    EXPECT_EQ(first, second);
    EXPECT_STREQ(first, L"");
}

TEST_F(DrawingConfig, TextOfTwoItems_IsReadUnchanged)
{
    const std::wstring text = itemElement(L"A", L"B", L"one") + L"\r\n " + itemElement(L"B", L"C", L"two") + L" rest ";
    ASSERT_TRUE(write(text));
    EXPECT_EQ(read(), (ReadText{true, text}));
}

TEST_F(DrawingConfig, AnyText_IsReadUnchanged)
{
    for (const std::wstring& text : {std::wstring(), std::wstring(L"no item"), std::wstring(L"é Ω 測 \U0001F310 < & >"),
                                     std::wstring(2, static_cast<wchar_t>(0xD800)), std::wstring(1000000, L'x')}) {
        ASSERT_TRUE(write(text));
        EXPECT_EQ(read(), (ReadText{true, text}));
    }
}

TEST_F(DrawingConfig, WrittenText_IsOneResbufUnderItsKey)
{
    ASSERT_TRUE(write(L"text"));
    EXPECT_EQ(storedChain(L"CONFIG_ITEM"), (Items{{300, L"text"}}));
}

TEST_F(DrawingConfig, SecondWrite_ReplacesTheText)
{
    ASSERT_TRUE(write(itemElement(L"A", L"B", L"one")));
    ASSERT_TRUE(write(itemElement(L"B", L"C", L"two")));
    EXPECT_EQ(read().text, itemElement(L"B", L"C", L"two"));
    EXPECT_EQ(Orvel::CResbufDictionary(L"ORVEL_CS_TRANSFORMATION_CONFIG", nullptr).GetEntryCount(), 1);
}

TEST_F(DrawingConfig, EmptyText_IsStored)
{
    ASSERT_TRUE(write(L"text"));
    ASSERT_TRUE(write(L""));
    EXPECT_EQ(storedChain(L"CONFIG_ITEM"), (Items{{300, L""}}));
    EXPECT_EQ(read(), (ReadText{true, L""}));
}

TEST_F(DrawingConfig, FirstEntry_IsReadUnderAnyKey)
{
    ASSERT_TRUE(write(L"text"));
    storeEntry(L"AN_EARLIER_KEY", {{300, L"earlier"}});
    EXPECT_EQ(read(), (ReadText{true, L"earlier"}));
}

TEST_F(DrawingConfig, FirstEntryWithAnotherCode_HidesALaterText)
{
    ASSERT_TRUE(write(L"text"));
    storeEntry(L"A", {{1071, 1}, {300, L"second"}});
    EXPECT_EQ(read(), kNothingRead);
}

TEST_F(DrawingConfig, FirstEntryWithoutText_HidesALaterText)
{
    ASSERT_TRUE(write(L"text"));
    storeEntry(L"A", {});
    EXPECT_EQ(read(), kNothingRead) << "an empty xrecord";
    {
        const Orvel::CResbufDictionary dictionary(L"ORVEL_CS_TRANSFORMATION_CONFIG", document.database());
        const Orvel::HostObject<QeDbDictionary> parent(dictionary.OpenDictionary(QeDb::kForWrite));
        const Orvel::HostObject<QeDbDictionary> child(new QeDbDictionary);
        QeDbObjectId id;
        ASSERT_EQ(parent->setAt(L"A", child.get(), id), Qeapp::eOk);
    }
    EXPECT_EQ(read(), kNothingRead) << "a dictionary";
}

TEST_F(DrawingConfig, OtherTextCodes_ReadAsNothing)
{
    for (int code = 301; code <= 309; ++code) {
        storeEntry(L"CONFIG_ITEM", {{code, L"text"}});
        EXPECT_EQ(read(), kNothingRead) << code;
    }
}

TEST_F(DrawingConfig, LaterResbufsOfTheFirstEntry_AreIgnored)
{
    storeEntry(L"CONFIG_ITEM", {{300, L"first"}, {300, L"second"}});
    EXPECT_EQ(read(), (ReadText{true, L"first"}));
}

TEST_F(DrawingConfig, EmptyXrecord_ReadsAsNothing)
{
    storeEntry(L"CONFIG_ITEM", {});
    EXPECT_EQ(read(), kNothingRead);
}

TEST_F(DrawingConfig, EmptyDictionary_ReadsAsNothing)
{
    ASSERT_TRUE(write(L"text"));
    ASSERT_TRUE(Orvel::CResbufDictionary(L"ORVEL_CS_TRANSFORMATION_CONFIG", nullptr).RemoveKey(L"CONFIG_ITEM"));
    EXPECT_EQ(read(), kNothingRead);
}

TEST_F(DrawingConfig, Configuration_IsThatOfTheWorkingDrawing)
{
    ASSERT_TRUE(write(L"text"));
    {
        const ScopedDocument other;
        EXPECT_EQ(read(), kNothingRead);
        ASSERT_TRUE(write(L"other"));
    }
    EXPECT_EQ(read(), (ReadText{true, L"text"}));
}

TEST_F(DrawingConfig, WithoutAWorkingDrawing_NothingIsReadOrWritten)
{
    qedbHostApplicationServices()->setWorkingDatabase(nullptr);
    EXPECT_EQ(read(), kNothingRead);
    Embedded::FaultInjection::watch();
    EXPECT_FALSE(write(L"text"));
    EXPECT_EQ(Embedded::FaultInjection::seen(), std::vector<std::string>()) << "no document is locked";
    qedbHostApplicationServices()->setWorkingDatabase(document.database());
}

TEST_F(DrawingConfig, WithoutApplicationServices_NothingIsReadOrWritten)
{
    const ScopedHostParts shutdown({.applicationServices = false});
    EXPECT_EQ(read(), kNothingRead);
    EXPECT_FALSE(write(L"text"));
}

TEST_F(DrawingConfig, DocumentThatAnotherClientLocked_KeepsItsText)
{
    ASSERT_TRUE(write(L"text"));
    const Embedded::ForeignDocumentLock other(document.get());
    EXPECT_FALSE(write(L"other"));
    EXPECT_EQ(read(), (ReadText{true, L"text"}));
}

TEST_F(DrawingConfig, EveryFailingCallOfReading_ReadsNothing)
{
    ASSERT_TRUE(write(L"text"));
    for (const FallibleCall& call : recordFallibleCalls([] { ASSERT_TRUE(read().read); })) {
        SCOPED_TRACE(call.name);
        const Embedded::ScopedFault fault(failing(call));
        EXPECT_EQ(read(), failureChangesNoResult(call) ? (ReadText{true, L"text"}) : kNothingRead);
    }
}

TEST_F(DrawingConfig, EveryFailingCallOfWriting_KeepsTheEarlierText)
{
    ASSERT_TRUE(write(L"text"));
    for (const FallibleCall& call : recordFallibleCalls([] { ASSERT_TRUE(write(L"text")); })) {
        SCOPED_TRACE(call.name);
        const Embedded::ScopedFault fault(failing(call));
        const bool written = write(L"other");
        Embedded::FaultInjection::disarm();
        EXPECT_EQ(written, failureChangesNoResult(call));
        EXPECT_EQ(read(), (ReadText{true, written ? L"other" : L"text"}));
        ASSERT_TRUE(write(L"text"));
    }
}

} // namespace
} // namespace Tests
