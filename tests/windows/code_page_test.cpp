#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "embedded/diagnostics/fault_injection.h"
#include "platform/win32.h"
#include "support/platform_test.h"

namespace {

using CodePage = Tests::PlatformTest;
using namespace std::string_literals;

/// Asks for the length first, as clients do.
std::wstring decode(const std::string& bytes)
{
    const auto length = static_cast<int>(bytes.size());
    std::wstring text(static_cast<std::size_t>(MultiByteToWideChar(CP_UTF8, 0, bytes.data(), length, nullptr, 0)),
                      L'?');
    const auto room = static_cast<int>(text.size());
    EXPECT_EQ(MultiByteToWideChar(CP_UTF8, 0, bytes.data(), length, text.data(), room), room);
    return text;
}

std::string encode(const std::wstring& text)
{
    const auto length = static_cast<int>(text.size());
    const int room = WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
    std::string bytes(static_cast<std::size_t>(room), '?');
    EXPECT_EQ(WideCharToMultiByte(CP_UTF8, 0, text.data(), length, bytes.data(), room, nullptr, nullptr), room);
    return bytes;
}

std::wstring wide(std::initializer_list<std::uint32_t> units)
{
    std::wstring text;
    for (const std::uint32_t unit : units)
        text += static_cast<wchar_t>(unit);
    return text;
}

struct Characters {
    std::wstring text;
    std::string bytes;
};

TEST_F(CodePage, CharacterOfEachLength_IsReadAndWritten)
{
    const Characters table[] = {{L"A", "A"},
                                {wide({0}), "\0"s},
                                {wide({0x7F}), "\x7F"},
                                {wide({0x80}), "\xC2\x80"},
                                {wide({0x7FF}), "\xDF\xBF"},
                                {wide({0x800}), "\xE0\xA0\x80"},
                                {wide({0xD7FF}), "\xED\x9F\xBF"},
                                {wide({0xE000}), "\xEE\x80\x80"},
                                {wide({0xFFFF}), "\xEF\xBF\xBF"},
                                {L"\U00010000", "\xF0\x90\x80\x80"},
                                {L"\U0010FFFF", "\xF4\x8F\xBF\xBF"},
                                {L"K\u00F8ge", "K\xC3\xB8ge"}};
    for (const Characters& row : table) {
        EXPECT_EQ(decode(row.bytes), row.text) << row.bytes;
        EXPECT_EQ(encode(row.text), row.bytes) << row.bytes;
    }
}

TEST_F(CodePage, CharacterBeyondTheBasicPlane_IsReadInThePlatformsForm)
{
    EXPECT_EQ(decode("\xF0\x9F\x8C\x8D").size(), sizeof(wchar_t) == 2 ? 2U : 1U);
}

TEST_F(CodePage, SurrogatePair_IsWrittenAsOneCharacter)
{
    EXPECT_EQ(encode(wide({0xD83C, 0xDF0D})), "\xF0\x9F\x8C\x8D");
    EXPECT_EQ(encode(wide({0xD83C, 0xD83C, 0xDF0D})), "\xEF\xBF\xBD\xF0\x9F\x8C\x8D");
}

TEST_F(CodePage, UnpairedSurrogate_IsWrittenAsTheReplacementCharacter)
{
    for (const std::uint32_t unit : {0xD800U, 0xDBFFU, 0xDC00U, 0xDFFFU})
        EXPECT_EQ(encode(L"a" + wide({unit}) + L"b"), "a\xEF\xBF\xBD"
                                                      "b")
            << unit;
}

TEST_F(CodePage, EachIllFormedPart_BecomesOneReplacementCharacter)
{
    const Characters table[] = {
        {L"\uFFFD", "\x80"},                          // a continuation byte
        {L"\uFFFD\uFFFD", "\xC0\xAF"},                // overlong
        {L"\uFFFD\uFFFD", "\xF5\x80"},                // beyond the last character
        {L"\uFFFD", "\xE2\x82"},                      // cut short at the end
        {L"\uFFFD", "\xF0\x9F\x8C"},                  // cut short at the end
        {L"\uFFFDA", "\xE2\x82\x41"},                 // cut short by a letter
        {L"\uFFFD\u20AC", "\xE2\x82\xE2\x82\xAC"},    // cut short by another character
        {L"a\uFFFD\uFFFD\uFFFDb\uFFFDc\uFFFD\uFFFDd", // all of these in one text
         "\x61\xF1\x80\x80\xE1\x80\xC2\x62\x80\x63\x80\xBF\x64"},
    };
    for (const Characters& row : table)
        EXPECT_EQ(decode(row.bytes), row.text) << testing::PrintToString(row.bytes);
}

TEST_F(CodePage, LengthMinusOne_ConvertsTheTextAndItsNul)
{
    wchar_t text[3] = {};
    EXPECT_EQ(MultiByteToWideChar(CP_UTF8, 0, "ab", -1, nullptr, 0), 3);
    EXPECT_EQ(MultiByteToWideChar(CP_UTF8, 0, "ab", -1, text, 3), 3);
    EXPECT_STREQ(text, L"ab");
    char bytes[3] = {};
    EXPECT_EQ(WideCharToMultiByte(CP_UTF8, 0, L"\u00F8", -1, nullptr, 0, nullptr, nullptr), 3);
    EXPECT_EQ(WideCharToMultiByte(CP_UTF8, 0, L"\u00F8", -1, bytes, 3, nullptr, nullptr), 3);
    EXPECT_STREQ(bytes, "\xC3\xB8");
}

TEST_F(CodePage, TooSmallBuffer_ReturnsZero)
{
    wchar_t text[2] = {};
    EXPECT_EQ(MultiByteToWideChar(CP_UTF8, 0, "ab", -1, text, 2), 0);
    char bytes[2] = {};
    EXPECT_EQ(WideCharToMultiByte(CP_UTF8, 0, L"\u00F8", -1, bytes, 2, nullptr, nullptr), 0);
}

// No system promises how many there are.
TEST_F(CodePage, IllFormedSequenceOfThreeOrFourBytes_BecomesReplacementCharacters)
{
    for (const char* const bytes : {"\xE0\x80\xAF", "\xF0\x82\x82\xAC", "\xED\xA0\x80", "\xF4\x90\x80\x80"}) {
        const std::wstring text = decode(bytes);
        EXPECT_FALSE(text.empty());
        EXPECT_EQ(text, std::wstring(text.size(), L'\uFFFD')) << testing::PrintToString(bytes);
    }
}

TEST_F(CodePage, InvalidArguments_ReturnZero)
{
    wchar_t text[4] = {};
    EXPECT_EQ(MultiByteToWideChar(CP_UTF8, 0, nullptr, 2, text, 4), 0);
    EXPECT_EQ(MultiByteToWideChar(CP_UTF8, 0, "ab", 0, text, 4), 0);
    EXPECT_EQ(MultiByteToWideChar(CP_UTF8, 0, "ab", 2, nullptr, 4), 0);
    EXPECT_EQ(MultiByteToWideChar(CP_UTF8, 0, "ab", 2, text, -1), 0);
}

TEST_F(CodePage, InjectedFault_FailsTheCall)
{
    for (const char* const call : {"MultiByteToWideChar", "WideCharToMultiByte"}) {
        const Embedded::ScopedFault fault({.call = call, .code = {}});
        const bool reads = std::string_view(call) == "MultiByteToWideChar";
        EXPECT_EQ(reads ? MultiByteToWideChar(CP_UTF8, 0, "a", 1, nullptr, 0)
                        : WideCharToMultiByte(CP_UTF8, 0, L"a", 1, nullptr, 0, nullptr, nullptr),
                  0);
        EXPECT_EQ(Embedded::FaultInjection::failedCalls(), 1U);
    }
}

} // namespace
