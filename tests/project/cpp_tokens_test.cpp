#include "project/cpp_tokens.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/platform_test.h"

namespace Tests {
namespace {

using Tokens = std::vector<std::string>;

class CppTokensTest : public PlatformTest {};

TEST_F(CppTokensTest, Tokens_AreIdentifiersNumbersAndPunctuation)
{
    EXPECT_EQ(tokenize("a::b->c(1'000);"), (Tokens{"a", "::", "b", "->", "c", "(", "1'000", ")", ";"}));
}

TEST_F(CppTokensTest, CommentsAndTexts_HaveNoTokens)
{
    EXPECT_EQ(tokenize("a /* b */ c // d\n e \"f \\\" g\" L\"h\" 'i' R\"x(j \" k)x\" l"), (Tokens{"a", "c", "e", "l"}));
}

TEST_F(CppTokensTest, PreprocessorLine_HasOnlyTheNameOfADefinition)
{
    EXPECT_EQ(tokenize("#include <a>\n#define B(x) \\\n  c\n#if d\ne\n#endif"), (Tokens{"#define", "B", "e"}));
}

TEST_F(CppTokensTest, TruncatedText_EndsTheTokens)
{
    EXPECT_EQ(tokenize("a \"b"), Tokens{"a"});
    EXPECT_EQ(tokenize("a /* b"), Tokens{"a"});
    EXPECT_EQ(tokenize("a #define"), Tokens{"a"});
    EXPECT_EQ(tokenize("a R\"x(b"), Tokens{"a"});
}

} // namespace
} // namespace Tests
