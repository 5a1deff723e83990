#include "project/porting_declarations.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/platform_test.h"

namespace Tests {
namespace {

using Texts = std::vector<std::string>;

class PortingDeclarationsTest : public PlatformTest {
protected:
    static Texts namesIn(const std::string& header)
    {
        Texts names;
        for (const Declaration& declaration : parseDeclarations(header))
            names.push_back(declaration.name);
        return names;
    }

    static Declaration onlyOneIn(const std::string& header)
    {
        const std::vector<Declaration> all = parseDeclarations(header);
        EXPECT_EQ(all.size(), 1U) << header;
        return all.empty() ? Declaration() : all.front();
    }
};

TEST_F(PortingDeclarationsTest, Names_HaveTheirScopesWithoutTheLibrarysNamespace)
{
    EXPECT_EQ(namesIn("namespace Qeapp { enum E : int { eOk = 0, eOther }; } // namespace Qeapp\n"
                      "namespace Zentara::Infrastructure::SpatialReference { enum class Status { ok }; }\n"
                      "struct R { short type; union { int number; char* text; } value; };\n"
                      "using Alias = int;\nextern \"C\" { void call(); }\nextern const KEY kKey;\n"),
              (Texts{"Qeapp::E", "Qeapp::eOk", "Qeapp::eOther", "Status", "Status::ok", "R", "R::type", "R::number",
                     "R::text", "R::value", "Alias", "call", "kKey"}));
}

TEST_F(PortingDeclarationsTest, PrivateMembersAndDeletedFunctions_AreLeftOut)
{
    EXPECT_EQ(namesIn("class C final : public B {\n    int hidden();\npublic:\n    C(const C&) = delete;\n    C();\n"
                      "    int shown() { return 1; }\nprotected:\n    ~C() override;\nprivate:\n    int data_{1};\n};\n"
                      "static_assert(true);\nint last();\n"),
              (Texts{"C", "C::C", "C::shown", "C::~C", "last"}));
}

TEST_F(PortingDeclarationsTest, AliasesOfNamespacesFriendsAndUsings_DeclareNothing)
{
    EXPECT_EQ(namesIn("namespace N = M::O;\nusing P::q;\nstruct E* call();\n"
                      "class C { friend bool operator==(C, C) = default; friend class D; };\n"),
              (Texts{"call", "C"}));
}

TEST_F(PortingDeclarationsTest, ForwardDeclaration_IsNoted)
{
    EXPECT_TRUE(onlyOneIn("class C;").isForward);
    EXPECT_FALSE(onlyOneIn("class C {};").isForward);
}

TEST_F(PortingDeclarationsTest, Enumerators_AreQualifiedByTheirNamespaceOrEnumerationClass)
{
    EXPECT_EQ(namesIn("namespace N {\nenum [[nodiscard]] E : int{a = 1, b = f(2, c)};\nenum : int { g };\n"
                      "enum class F { d, };\n} // namespace N\nenum G { e };"),
              (Texts{"N::E", "N::a", "N::b", "N::g", "N::F", "N::F::d", "G", "e"}));
}

TEST_F(PortingDeclarationsTest, TruncatedHeader_GivesTheDeclarationsItContains)
{
    EXPECT_EQ(namesIn("namespace N { class C { public: int a(); int b("), (Texts{"N::C", "N::C::a", "N::C::b"}));
    EXPECT_EQ(namesIn("enum E { a,"), (Texts{"E", "a"}));
    EXPECT_EQ(namesIn("int f() { if ("), Texts{"f"});
    EXPECT_EQ(namesIn("template <class"), Texts{});
}

TEST_F(PortingDeclarationsTest, Section_IsACommentBetweenEmptyLinesBelowThePragma)
{
    EXPECT_EQ(onlyOneIn("// A header.\n\n#pragma once\n\nint a();").section, "");
    EXPECT_EQ(onlyOneIn("#pragma once\n\n// Things\n\nnamespace N {\n} // namespace N\n\nint a();").section, "Things");
}

TEST_F(PortingDeclarationsTest, Comment_IsThatOfTheDeclarationBelowIt)
{
    const std::vector<Declaration> all =
        parseDeclarations("// Not this.\n/// One\n/// thing.\nint a(); // nor this\nint b();\n");
    ASSERT_EQ(all.size(), 2U);
    EXPECT_EQ(all[0].comment, "One thing.");
    EXPECT_EQ(all[1].comment, "");
}

TEST_F(PortingDeclarationsTest, Text_HasNoBodyNoInitialisersAndNoAttributes)
{
    EXPECT_EQ(onlyOneIn("[[nodiscard]] inline int f(int x) noexcept { return x; }").text, "int f(int x)");
    EXPECT_EQ(onlyOneIn("P_API Ptr(T* object) : object_(object) {}").text, "Ptr(T* object)");
    EXPECT_EQ(onlyOneIn("virtual bool f()\n    const = 0;").text, "virtual bool f() const");
    EXPECT_EQ(onlyOneIn("template <class T> T* f(T*& a) { return a; }").text, "template <class T> T* f(T*& a)");
    EXPECT_EQ(onlyOneIn("enum E : short {};").text, "enum E");
    EXPECT_EQ(namesIn("#define A(x) \\\n    int b(); \\\n    int c()\nint d();"), (Texts{"A", "d"}));
    EXPECT_EQ(onlyOneIn("/// Nothing.\n#define WINAPI\n").text, "#define WINAPI");
}

TEST_F(PortingDeclarationsTest, Signature_HasTypesWithoutNamesAndDefaults)
{
    const Signature signature =
        onlyOneIn("static const C* f(const wchar_t* text, N::Id, wchar_t*& copy, unsigned int, bool b = true) const;")
            .signature;
    EXPECT_EQ(signature.result, "const C*");
    EXPECT_EQ(signature.parameters, (Texts{"const wchar_t*", "N::Id", "wchar_t*&", "unsigned", "bool"}));
    EXPECT_EQ(signature.required, 4U);
    EXPECT_TRUE(signature.isConst);
}

TEST_F(PortingDeclarationsTest, SpecialMembers_AreConstructorsDestructorsAndOperators)
{
    const std::vector<Declaration> all =
        parseDeclarations("struct C { C(); ~C(); T* operator->() const; bool is(); }; void C2();");
    ASSERT_EQ(all.size(), 6U);
    EXPECT_FALSE(isSpecialMember(all[0]));
    EXPECT_TRUE(isSpecialMember(all[1]));
    EXPECT_TRUE(isSpecialMember(all[2]));
    EXPECT_TRUE(isSpecialMember(all[3]));
    EXPECT_FALSE(isSpecialMember(all[4]));
    EXPECT_FALSE(isSpecialMember(all[5]));
}

} // namespace
} // namespace Tests
