#include "project/declared_names.h"

#include <gtest/gtest.h>

#include "project/cpp_tokens.h"
#include "support/platform_test.h"

namespace Tests {
namespace {

using Tokens = std::vector<std::string>;

class DeclaredNamesTest : public PlatformTest {};

TEST_F(DeclaredNamesTest, Tokens_AreIdentifiersNumbersAndPunctuation)
{
    EXPECT_EQ(tokenize("a::b->c(1'000);"), (Tokens{"a", "::", "b", "->", "c", "(", "1'000", ")", ";"}));
}

TEST_F(DeclaredNamesTest, CommentsAndTexts_HaveNoTokens)
{
    EXPECT_EQ(tokenize("a /* b */ c // d\n e \"f \\\" g\" L\"h\" 'i' R\"x(j \" k)x\" l"), (Tokens{"a", "c", "e", "l"}));
}

TEST_F(DeclaredNamesTest, PreprocessorLine_HasOnlyTheNameOfADefinition)
{
    EXPECT_EQ(tokenize("#include <a>\n#define B(x) \\\n  c\n#if d\ne\n#endif"), (Tokens{"#define", "B", "e"}));
}

TEST_F(DeclaredNamesTest, TruncatedText_EndsTheTokens)
{
    EXPECT_EQ(tokenize("a \"b"), Tokens{"a"});
    EXPECT_EQ(tokenize("a /* b"), Tokens{"a"});
    EXPECT_EQ(tokenize("a #define"), Tokens{"a"});
    EXPECT_EQ(tokenize("a R\"x(b"), Tokens{"a"});
}

TEST_F(DeclaredNamesTest, FunctionsConstantsAliasesAndMacros_AreDeclaredNames)
{
    EXPECT_EQ(parseDeclaredNames("int* call(int (&)[2], const C&);\n"
                                 "extern \"C\" { void c_call(); }\n"
                                 "extern API const KEY kKey;\n"
                                 "inline constexpr int kValue = f(1);\n"
                                 "using Alias = int;\n"
                                 "#define MACRO 1\n"),
              (Names{"call", "c_call", "kKey", "kValue", "Alias", "MACRO"}));
}

TEST_F(DeclaredNamesTest, FunctionTemplate_DeclaresOnlyItsOwnName)
{
    EXPECT_EQ(
        parseDeclaredNames("template <class T> Status open(T*& object, int)\n{ T* other = nullptr; }\nint next();"),
        (Names{"open", "next"}));
}

TEST_F(DeclaredNamesTest, PublicMembers_AreQualifiedByTheirClass)
{
    EXPECT_EQ(parseDeclaredNames("class API C final : public B, D {\n"
                                 "    int hidden();\n"
                                 "public:\n"
                                 "    explicit C(int) : hidden_(1) {}\n"
                                 "    virtual ~C();\n"
                                 "    C& operator=(const C&) = delete;\n"
                                 "    static C* make(const char* = nullptr);\n"
                                 "    [[nodiscard]] bool has() const { return true; }\n"
                                 "protected:\n"
                                 "    void guarded();\n"
                                 "private:\n"
                                 "    int hidden_ = 0;\n"
                                 "};"),
              (Names{"C", "C::make", "C::has"}));
}

TEST_F(DeclaredNamesTest, Fields_IncludeThoseOfANamelessUnion)
{
    EXPECT_EQ(
        parseDeclaredNames("struct S { S* next; unsigned char bytes[8]; union { int i; T* t; } value; };\nint last;"),
        (Names{"S", "S::next", "S::bytes", "S::i", "S::t", "S::value", "last"}));
}

TEST_F(DeclaredNamesTest, Enumerators_AreQualifiedByScopeOrEnumerationClass)
{
    EXPECT_EQ(parseDeclaredNames("namespace N {\n"
                                 "enum [[nodiscard]] E : int{a = 1, b = f(2, c)};\n"
                                 "enum : int { g };\n"
                                 "enum class F { d, };\n"
                                 "} // namespace N\n"
                                 "enum G { e };"),
              (Names{"N::E", "N::a", "N::b", "N::g", "N::F", "N::F::d", "G", "e"}));
}

TEST_F(DeclaredNamesTest, ForwardDeclarationsFriendsAndNamespaceAliases_AreNotDeclaredNames)
{
    EXPECT_EQ(parseDeclaredNames("class A; struct B;\nnamespace N = M::O;\nusing P::q;\n"
                                 "class C { friend bool operator==(C, C) = default; friend class D; };\n"
                                 "struct E* call();"),
              (Names{"C", "call"}));
}

TEST_F(DeclaredNamesTest, TruncatedHeader_GivesTheNamesItContains)
{
    EXPECT_EQ(parseDeclaredNames("namespace N { class C { public: int a(); int b("),
              (Names{"N::C", "N::C::a", "N::C::b"}));
    EXPECT_EQ(parseDeclaredNames("enum E { a,"), (Names{"E", "a"}));
    EXPECT_EQ(parseDeclaredNames("template <class"), Names{});
}

} // namespace
} // namespace Tests
