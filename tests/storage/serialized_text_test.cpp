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

TEST_F(SerializedText, IsTheLibrarysTextUpToItsNul)
{
    ASSERT_EQ(SerializeToWideText(text, system.get(), true), Library::statusOk);
    EXPECT_EQ(text, serializedText(system.get(), true));
    EXPECT_EQ(text.find(L'\0'), std::wstring::npos);
}

TEST_F(SerializedText, HoldsTheDependentsOnlyWhereTheyAreAskedFor)
{
    ASSERT_EQ(SerializeToWideText(text, system.get(), false), Library::statusOk);
    EXPECT_EQ(text, serializedText(system.get(), false));
    ASSERT_EQ(DeserializeWideText(definitions, text.c_str()), Library::statusOk);
    EXPECT_EQ(describe(definitions), (Texts{L"system EPSG:25832"}));
}

TEST_F(SerializedText, GivesTheSystemItsDatumAndItsEllipsoidInThatOrder)
{
    ASSERT_EQ(SerializeToWideText(text, system.get(), true), Library::statusOk);
    ASSERT_EQ(DeserializeWideText(definitions, text.c_str()), Library::statusOk);
    EXPECT_EQ(describe(definitions), (Texts{L"system EPSG:25832", L"datum EPSG:6258", L"ellipsoid EPSG:7019"}));
}

TEST_F(SerializedText, KeepsWideCharacters)
{
    const auto mine = UserSystem{.code = L"MINE:\x00C4\U0001F30D", .name = L"\x4E16\x754C"}.system();
    ASSERT_EQ(SerializeToWideText(text, mine.get(), false), Library::statusOk);
    ASSERT_EQ(DeserializeWideText(definitions, text.c_str()), Library::statusOk);
    EXPECT_EQ(describe(definitions), (Texts{L"system MINE:\x00C4\U0001F30D"}));
    const wchar_t* name = nullptr;
    ASSERT_EQ(definitions->GetItem(0)->GetName(name), Library::statusOk);
    EXPECT_STREQ(name, L"\x4E16\x754C");
}

/// The system whose text takes 65,536 bytes with its NUL has one unit for each two bytes.
SystemHolder systemWithTextOf(std::size_t units)
{
    const std::size_t frame = serializedText(UserSystem{.name = L"x"}.system().get(), false).size() - 1;
    return UserSystem{.name = varied(units - 1 - frame)}.system();
}

TEST_F(SerializedText, Of65536BytesIsTheLongest)
{
    ASSERT_EQ(SerializeToWideText(text, systemWithTextOf(32768).get(), false), Library::statusOk);
    EXPECT_EQ(Orvel::encodeUtf16le(text).size(), 65536U);
}

TEST_F(SerializedText, OverItsLimitIsTheLibrarysStatusAndNoText)
{
    EXPECT_EQ(SerializeToWideText(text, systemWithTextOf(32769).get(), false), Library::statusBufferTooSmall);
    EXPECT_EQ(text, L"before");
}

// The buffer that the library receives is zero.
TEST_F(SerializedText, SuccessThatWritesNothingIsAnEmptyText)
{
    const ScopedFault fault(failing("DefinitionStream::Serialize_s", 0));
    EXPECT_EQ(SerializeToWideText(text, system.get(), true), Library::statusOk);
    EXPECT_EQ(text, L"");
}

TEST_F(SerializedText, FailingSerializationIsTheLibrarysStatusAndNoText)
{
    const ScopedFault fault(failing("DefinitionStream::Serialize_s"));
    EXPECT_EQ(SerializeToWideText(text, system.get(), true), kPlanned);
    EXPECT_EQ(text, L"before");
}

TEST_F(SerializedText, NullTextIs54)
{
    const auto calls = fallibleCallsOf([&] { EXPECT_EQ(DeserializeWideText(definitions, nullptr), 54); });
    EXPECT_EQ(calls.size(), 0U) << "the library is not asked";
    EXPECT_FALSE(definitions);
}

TEST_F(SerializedText, EmptyTextIs55)
{
    const auto calls = fallibleCallsOf([&] { EXPECT_EQ(DeserializeWideText(definitions, L""), 55); });
    EXPECT_EQ(calls.size(), 0U) << "the library is not asked";
    EXPECT_FALSE(definitions);
}

TEST_F(SerializedText, ForeignTextIsTheLibrarysStatus)
{
    EXPECT_EQ(DeserializeWideText(definitions, L"PROJCS[\"no such text\"]"), Library::statusUnreadable);
    EXPECT_FALSE(definitions);
}

TEST_F(SerializedText, FailingDeserializationIsTheLibrarysStatus)
{
    text = serializedText(system.get());
    const ScopedFault fault(failing("DefinitionStream::Deserialize_s"));
    EXPECT_EQ(DeserializeWideText(definitions, text.c_str()), kPlanned);
    EXPECT_FALSE(definitions);
}

} // namespace
} // namespace Tests
