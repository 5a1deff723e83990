#include "project/forward_declarations.h"

#include <gtest/gtest.h>

#include "support/platform_test.h"

namespace Tests {
namespace {

using TypeNames = std::set<std::string>;

class ForwardDeclarationsTest : public PlatformTest {
protected:
    static std::size_t countIn(const std::string& text)
    {
        return findForwardDeclarations({{"src/a.h", text}}, {"Drawing", "Status"}).size();
    }
};

TEST_F(ForwardDeclarationsTest, Module_DeclaresNoClassOfThePlatform)
{
    const TypeNames names = findDefinedTypes(readFiles(ORVEL_SOURCE_DIR, {"platform"}, {".h"}));
    ASSERT_TRUE(names.contains("QeDbDatabase") && names.contains("Ptr") && names.contains("ErrorStatus"));
    const std::vector<SourceFile> sources = readFiles(ORVEL_SOURCE_DIR, {"src"}, {".h", ".cpp"});
    ASSERT_FALSE(sources.empty());
    EXPECT_EQ(joinLines(findForwardDeclarations(sources, names)), "");
}

TEST_F(ForwardDeclarationsTest, DefinedTypes_AreNamedWithoutMacrosAndAttributesOfTheirs)
{
    EXPECT_EQ(
        findDefinedTypes(
            {{"a.h", "class HOST_API A : public B {}; struct C final {}; enum [[nodiscard]] D : int {}; class E;\n"
                     "template <class T> struct F {}; enum class G {}; enum { h }; struct I;"}}),
        (TypeNames{"A", "C", "D", "F", "G"}));
}

TEST_F(ForwardDeclarationsTest, EveryFormOfADeclaration_IsFound)
{
    for (const char* text : {"class Drawing;", "struct Drawing;", "namespace N { class Drawing; }",
                             "enum Status : int;", "enum class Status;", "template <class T> class Drawing;",
                             "void f(class Drawing* d);", "friend class Drawing;", "void f(int, class Drawing* d);",
                             "class HOST_API Drawing;", "struct N::Drawing* d;"})
        EXPECT_GE(countIn(text), 1U) << text;
}

TEST_F(ForwardDeclarationsTest, OtherUses_AreNotFound)
{
    for (const char* text : {"Drawing* d;", "class DrawingHolder;", "class Own : public Drawing {};",
                             "template <class Drawing, class Status> int n;", "// class Drawing;",
                             "template <class T> void f(Drawing*, T);", "using Status = N::Status;"})
        EXPECT_EQ(countIn(text), 0U) << text;
}

} // namespace
} // namespace Tests
