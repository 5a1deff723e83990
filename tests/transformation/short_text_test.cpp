#include "transformation/short_text.h"

#include <gtest/gtest.h>

#include <vector>

namespace Tests {
namespace {

TEST(ShortText, NewText_IsEmpty)
{
    EXPECT_STREQ(Orvel::ShortText().c_str(), L"");
}

TEST(ShortText, TextsOfEveryLength_FollowEachOtherUnchanged)
{
    Orvel::ShortText text;
    for (const std::size_t length : std::vector<std::size_t>{0, 1, 14, 15, 16, 17, 200, 16, 15, 3, 0}) {
        const std::wstring expected(length, L'x');
        text.assign(expected);
        EXPECT_EQ(text.c_str(), expected);
    }
}

TEST(ShortText, ItsOwnText_CanBeAssigned)
{
    for (const std::size_t length : std::vector<std::size_t>{5, 15, 16, 40}) {
        Orvel::ShortText text;
        text.assign(std::wstring(length, L'a') + L"bc");
        text.assign(text.c_str());
        EXPECT_EQ(text.c_str(), std::wstring(length, L'a') + L"bc");
        text.assign(std::wstring_view(text.c_str()).substr(length));
        EXPECT_STREQ(text.c_str(), L"bc");
    }
}

TEST(ShortText, EveryEndOfItsOwnText_CanBeAssigned)
{
    const std::wstring whole = L"abcdefghijklmno";
    for (std::size_t start = 0; start <= whole.size(); ++start) {
        Orvel::ShortText text;
        text.assign(whole);
        text.assign(std::wstring_view(text.c_str()).substr(start));
        EXPECT_EQ(text.c_str(), whole.substr(start));
    }
}

TEST(ShortText, Copy_HasATextOfItsOwn)
{
    for (const std::size_t length : std::vector<std::size_t>{15, 16}) {
        Orvel::ShortText text;
        text.assign(std::wstring(length, L'a'));
        const Orvel::ShortText copy = text;
        text.assign(L"b");
        EXPECT_EQ(copy.c_str(), std::wstring(length, L'a'));
    }
}

} // namespace
} // namespace Tests
