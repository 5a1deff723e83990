#include "embedded/base/ascii_run.h"

#include <gtest/gtest.h>

#include <string>

namespace Tests {
namespace {

template <class Character>
class AsciiRun : public testing::Test {
};

using Characters = testing::Types<char, char16_t, wchar_t>;
TYPED_TEST_SUITE(AsciiRun, Characters, );

TYPED_TEST(AsciiRun, EndsBeforeTheFirstOtherCharacter)
{
    using Unsigned = std::make_unsigned_t<TypeParam>;
    for (const Unsigned other : {Unsigned{0x80}, std::numeric_limits<Unsigned>::max()}) {
        for (std::size_t length = 0; length <= 20; ++length) {
            for (std::size_t position = 0; position <= length; ++position) {
                std::basic_string<TypeParam> text(length, TypeParam{0x7F});
                if (position < length)
                    text[position] = static_cast<TypeParam>(other);
                std::basic_string_view<TypeParam> rest = text;
                EXPECT_EQ(Embedded::takeAscii(rest).size(), position) << "of " << length;
                EXPECT_EQ(rest.data(), text.data() + position);
                EXPECT_EQ(rest.size(), length - position);
            }
        }
    }
}

TYPED_TEST(AsciiRun, IncludesTheNul)
{
    const std::basic_string<TypeParam> text(9, TypeParam{});
    std::basic_string_view<TypeParam> rest = text;
    EXPECT_EQ(Embedded::takeAscii(rest).size(), text.size());
}

} // namespace
} // namespace Tests
