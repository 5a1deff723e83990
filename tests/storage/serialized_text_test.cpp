#include "storage/serialized_text.h"

#include "storage/failing_calls.h"
#include "storage/unusual_definitions.h"
#include "storage/utf16le.h"
#include "support/platform_test.h"

namespace Tests {
namespace {

using Embedded::ScopedFault;
using Orvel::DeserializeWideText;
using Orvel::SerializeToWideText;

class SerializedText : public PlatformTest {
protected:
    const SystemHolder system = catalogSystem(L"EPSG:25832");
    std::wstring text = L"before";
    ArrayHolder definitions;
};

TEST_F(SerializedText, EndsBeforeTheNulOfTheLibrarysText)
{
    ASSERT_EQ(SerializeToWideText(text, system.get(), true), Library::statusOk);
    EXPECT_EQ(text, serializedText(system.get(), true));
    EXPECT_EQ(text.find(L'\0'), std::wstring::npos);
}

TEST_F(SerializedText, HasDependentsOnlyOnRequest)
{
    ASSERT_EQ(SerializeToWideText(text, system.get(), false), Library::statusOk);
    EXPECT_EQ(text, serializedText(system.get(), false));
    ASSERT_EQ(DeserializeWideText(definitions, text.c_str()), Library::statusOk);
    EXPECT_EQ(describe(definitions), (Texts{L"system EPSG:25832"}));
}

TEST_F(SerializedText, HasSystemThenDatumThenEllipsoid)
{
    ASSERT_EQ(SerializeToWideText(text, system.get(), true), Library::statusOk);
    ASSERT_EQ(DeserializeWideText(definitions, text.c_str()), Library::statusOk);
    EXPECT_EQ(describe(definitions), (Texts{L"system EPSG:25832", L"datum EPSG:6258", L"ellipsoid EPSG:7019"}));
}

TEST_F(SerializedText, KeepsWideCharacters)
{
    const auto mine = UserSystem{.code = L"MINE:\x00C4\U0001F30D", .name = L"\x4E16\x754C"}.makeSystem();
    ASSERT_EQ(SerializeToWideText(text, mine.get(), false), Library::statusOk);
    ASSERT_EQ(DeserializeWideText(definitions, text.c_str()), Library::statusOk);
    EXPECT_EQ(describe(definitions), (Texts{L"system MINE:\x00C4\U0001F30D"}));
    const wchar_t* name = nullptr;
    ASSERT_EQ(definitions->GetItem(0)->GetName(name), Library::statusOk);
    EXPECT_STREQ(name, L"\x4E16\x754C");
}

/// Makes a system whose text has that many units of 2 bytes, its NUL included.
SystemHolder makeSystemWithTextLength(std::size_t units)
{
    const std::size_t fixedUnits = serializedText(UserSystem{.name = L"x"}.makeSystem().get(), false).size() - 1;
    return UserSystem{.name = varied(units - 1 - fixedUnits)}.makeSystem();
}

TEST_F(SerializedText, LongestTextTakes65536Bytes)
{
    ASSERT_EQ(SerializeToWideText(text, makeSystemWithTextLength(32768).get(), false), Library::statusOk);
    EXPECT_EQ(Orvel::encodeUtf16le(text).size(), 65536U);
}

TEST_F(SerializedText, TextThatIsTooLongReturnsTheLibrarysStatusAndNoText)
{
    EXPECT_EQ(SerializeToWideText(text, makeSystemWithTextLength(32769).get(), false), Library::statusBufferTooSmall);
    EXPECT_EQ(text, L"before");
}

// The library receives a zeroed buffer.
TEST_F(SerializedText, SerializationThatWritesNothingGivesAnEmptyText)
{
    const ScopedFault fault(failing("DefinitionStream::Serialize_s", 0));
    EXPECT_EQ(SerializeToWideText(text, system.get(), true), Library::statusOk);
    EXPECT_EQ(text, L"");
}

TEST_F(SerializedText, FailingSerializationReturnsTheLibrarysStatusAndNoText)
{
    const ScopedFault fault(failing("DefinitionStream::Serialize_s"));
    EXPECT_EQ(SerializeToWideText(text, system.get(), true), kInjectedResult);
    EXPECT_EQ(text, L"before");
}

TEST_F(SerializedText, NullTextReturns54)
{
    const auto calls = recordFallibleCalls([&] { EXPECT_EQ(DeserializeWideText(definitions, nullptr), 54); });
    EXPECT_EQ(calls.size(), 0U) << "no library call";
    EXPECT_FALSE(definitions);
}

TEST_F(SerializedText, NullBytesReturn54)
{
    EXPECT_EQ(Orvel::deserializeUtf16leText(definitions, nullptr), Library::statusNullText);
    EXPECT_FALSE(definitions);
}

TEST_F(SerializedText, EmptyTextReturns55)
{
    const auto calls = recordFallibleCalls([&] { EXPECT_EQ(DeserializeWideText(definitions, L""), 55); });
    EXPECT_EQ(calls.size(), 0U) << "no library call";
    EXPECT_FALSE(definitions);
}

TEST_F(SerializedText, UnreadableTextReturnsTheLibrarysStatus)
{
    EXPECT_EQ(DeserializeWideText(definitions, L"PROJCS[\"no such text\"]"), Library::statusUnreadable);
    EXPECT_FALSE(definitions);
}

TEST_F(SerializedText, FailingDeserializationReturnsTheLibrarysStatus)
{
    text = serializedText(system.get());
    const ScopedFault fault(failing("DefinitionStream::Deserialize_s"));
    EXPECT_EQ(DeserializeWideText(definitions, text.c_str()), kInjectedResult);
    EXPECT_FALSE(definitions);
}

} // namespace
} // namespace Tests
