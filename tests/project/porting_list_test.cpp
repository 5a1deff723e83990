#include "project/porting_list.h"

#include <gtest/gtest.h>

#include <regex>
#include <string>
#include <utility>
#include <vector>

#include "support/platform_test.h"

namespace Tests {
namespace {

/// The module's own names with a prefix of the platform: the host looks for them in the module.
const Names kModuleNames{"qerxEntryPoint", "qerxGetApiVersion"};

/// The platform that gives the module aliases, wrappers and macros: only the compiler can tell what its names are.
constexpr std::string_view kLoosePlatform = "tests/porting/loose/";

/// The declarations of all headers below a folder.
std::vector<Declaration> readDeclarations(const std::string& folder)
{
    std::vector<Declaration> declarations;
    for (const SourceFile& file : readFiles(ORVEL_SOURCE_DIR, {folder}, {".h"})) {
        if (file.path == "platform/export.h")
            continue;
        const std::vector<Declaration> more = parseDeclarations(file.text);
        declarations.insert(declarations.end(), more.begin(), more.end());
    }
    return declarations;
}

/// What the four headers of the kit ask for, which has comments there.
std::vector<Declaration> readKit()
{
    std::vector<Declaration> kit;
    for (const char* header : {"host.h", "spatial_reference.h", "foundation.h", "win32.h"})
        for (Declaration& declaration :
             parseDeclarations(readFile(ORVEL_SOURCE_DIR, std::string("examples/port/platform/") + header).text))
            if (!declaration.comment.empty())
                kit.push_back(std::move(declaration));
    return kit;
}

/// The folders of the platforms that are written by hand for the tests and declare what is listed as it is listed.
std::vector<std::string> findExactPlatforms()
{
    std::vector<std::string> folders;
    for (const SourceFile& file : readFiles(ORVEL_SOURCE_DIR, {"tests/porting"}, {".h"}))
        if (file.path.ends_with("/host.h") && !file.path.starts_with(kLoosePlatform))
            folders.push_back(file.path.substr(0, file.path.rfind('/')));
    return folders;
}

bool isTypeOrMacro(const Declaration& declaration)
{
    static const std::regex beginning(R"(^(#define|class|struct|using|enum)\b.*)");
    return !declaration.isFunction && std::regex_match(declaration.text, beginning);
}

/// The names without their scopes.
Names collectLastParts(const Names& names)
{
    Names parts;
    for (const std::string& name : names)
        parts.insert(name.substr(name.rfind(':') + 1));
    return parts;
}

class PortingListTest : public PlatformTest {
protected:
    const std::vector<Declaration> kit_ = readKit();
    const Names listed_ = collectNames(kit_);
    const Usage usage_ = collectUsage(readFiles(ORVEL_SOURCE_DIR, {"src"}, {".h", ".cpp"}));
};

class PortingListReaderTest : public PlatformTest {};

Usage parseUsage(const std::string& source)
{
    return collectUsage({{"src/a.cpp", source}});
}

std::string compare(const std::string& asked, const std::string& platform)
{
    return joinLines(compareWithPlatform(parseDeclarations(asked), parseDeclarations(platform)));
}

TEST_F(PortingListTest, EveryListedName_IsUsedByTheSourcesOrIsForOthers)
{
    ASSERT_FALSE(listed_.empty());
    Names unused;
    for (const Declaration& declaration : kit_)
        if (!isSpecialMember(declaration) && !isForOthers(declaration) && !isUsed(declaration.name, listed_, usage_))
            unused.insert(declaration.name);
    EXPECT_EQ(joinLines(complainAboutMissing(unused, {}, "listed, and used by no source")), "");
}

TEST_F(PortingListTest, EveryPlatformNameThatTheSourcesUse_IsListed)
{
    const Names interface = collectNames(readDeclarations("platform"));
    ASSERT_FALSE(interface.empty());
    EXPECT_EQ(joinLines(complainAboutMissing(findUsedFreeNames(interface, usage_), listed_, "used, and not listed")),
              "");
}

TEST_F(PortingListTest, EveryNameWithAPlatformPrefix_IsListedOrTheModulesOwn)
{
    EXPECT_EQ(joinLines(complainAboutMissing(findUnlistedNames(listed_, usage_), kModuleNames, "used, and not listed")),
              "");
}

TEST_F(PortingListTest, TheModulesOwnNames_AreInTheSourcesAndNotListed)
{
    EXPECT_EQ(joinLines(complainAboutMissing(kModuleNames, findUnlistedNames(listed_, usage_),
                                             "listed, or not in the sources")),
              "");
}

TEST_F(PortingListTest, EveryListedDeclaration_SuitsTheProjectsOwnPlatform)
{
    std::vector<Declaration> listed = kit_;
    // A macro declares it there.
    std::erase_if(listed, [](const Declaration& each) { return each.name == "QeRxDynamicLinker::desc"; });
    EXPECT_EQ(joinLines(compareWithPlatform(listed, readDeclarations("platform"))), "");
}

TEST_F(PortingListTest, EveryListedDeclaration_SuitsThePlatformsWrittenByHand)
{
    ASSERT_FALSE(findExactPlatforms().empty());
    for (const std::string& folder : findExactPlatforms()) {
        EXPECT_EQ(joinLines(compareWithPlatform(kit_, readDeclarations(folder))), "") << folder;
    }
}

TEST_F(PortingListTest, PlatformWrittenByHand_DeclaresNoMemberCallOrNumberThatIsNotListed)
{
    // A class may declare the members of its bases again.
    const Names listed = collectLastParts(listed_);
    for (const std::string& folder : findExactPlatforms()) {
        std::vector<Declaration> declarations = readDeclarations(folder);
        std::erase_if(declarations, isTypeOrMacro); // which help to declare what is listed
        const Names declared = collectLastParts(collectNames(declarations));
        EXPECT_EQ(joinLines(complainAboutMissing(declared, listed, "not listed")), "") << folder;
    }
}

TEST_F(PortingListTest, EveryListedName_OccursInTheLoosePlatform)
{
    const std::vector<SourceFile> headers = readFiles(ORVEL_SOURCE_DIR, {std::string(kLoosePlatform)}, {".h"});
    const Usage loose = collectUsage(headers);
    std::vector<Declaration> needed = kit_;
    std::erase_if(needed, isForOthers);
    if (!headers.empty()) {
        EXPECT_EQ(joinLines(complainAboutMissing(collectLastParts(collectNames(needed)), loose.identifiers,
                                                 "listed, and not in the loose platform")),
                  "");
    }
}

TEST_F(PortingListReaderTest, Member_IsUsedAfterAnObjectAPointerOrItsClass)
{
    const Names declared{"C", "C::m"};
    EXPECT_TRUE(isUsed("C::m", declared, parseUsage("c.m();")));
    EXPECT_TRUE(isUsed("C::m", declared, parseUsage("c->m();")));
    EXPECT_TRUE(isUsed("C::m", declared, parseUsage("C::m();")));
    EXPECT_TRUE(isUsed("C::m", declared, parseUsage("struct D : C { int m(int) const override; };")));
    EXPECT_FALSE(isUsed("C::m", declared, parseUsage("m(); int m = 0; struct D { int m(); int n() override; };")));
    EXPECT_FALSE(isUsed("C::m", declared, parseUsage("// c.m()\n\"c.m()\"; c.mm();")));
}

TEST_F(PortingListReaderTest, Class_IsUsedByNameOrByAMember)
{
    const Names declared{"C", "C::m", "CC"};
    EXPECT_TRUE(isUsed("C", declared, parseUsage("C c;")));
    EXPECT_TRUE(isUsed("C", declared, parseUsage("c()->m();")));
    EXPECT_FALSE(isUsed("C", declared, parseUsage("CC c; c.n();")));
}

TEST_F(PortingListReaderTest, NameInANamespace_IsUsedAfterTheNamespace)
{
    const Names declared{"N::e"};
    EXPECT_TRUE(isUsed("N::e", declared, parseUsage("return N::e;")));
    EXPECT_FALSE(isUsed("N::e", declared, parseUsage("return M::e + e;")));
}

TEST_F(PortingListReaderTest, UsedFreeNames_ExcludeMembersAndUnusedNames)
{
    const Names declared{"C", "C::m", "call", "N::e", "unused"};
    EXPECT_EQ(findUsedFreeNames(declared, parseUsage("C c; c.m(); call(N::e);")), (Names{"C", "call", "N::e"}));
}

TEST_F(PortingListReaderTest, UnlistedNames_HaveAPlatformPrefixAndAreInNoListedName)
{
    const std::string source = "QeDbThing t; qedbCall(); Qeapp::eOk; qeutCall(); FqObject o; quite(); Query q; kQeKey;";
    EXPECT_EQ(findUnlistedNames({"QeDbThing", "Qeapp::eOk"}, parseUsage(source)),
              (Names{"FqObject", "kQeKey", "qedbCall", "qeutCall"}));
}

TEST_F(PortingListReaderTest, Platform_LacksADeclarationOrHasOtherTypes)
{
    EXPECT_EQ(compare("/// Calls.\nint f(int a);", "int f(int b);"), "");
    EXPECT_EQ(compare("/// Calls.\nint f(int a);", "int g(int b);"), "f: not declared\n");
    EXPECT_EQ(compare("/// Calls.\nint f(int a);", "int f(char b);"),
              "f: expected int f(int a), found int f(char b)\n");
    EXPECT_EQ(compare("/// Calls.\nint f(int a);", "bool f(int b);"),
              "f: expected int f(int a), found bool f(int b)\n");
    EXPECT_EQ(compare("struct C {\n/// A field.\nshort s; };", "struct C { int s; };"),
              "C::s: expected short s, found int s\n");
    EXPECT_EQ(compare("struct C {\n/// Calls.\nint f() const; };", "struct C { int f(); };"),
              "C::f: expected int f() const, found int f()\n");
}

TEST_F(PortingListReaderTest, Platform_MayHaveOverloadsDefaultsBasesAndFreeResults)
{
    EXPECT_EQ(compare("/// Calls.\nint f(int a);", "int f(); int f(int, bool = true);"), "");
    EXPECT_EQ(compare("/// Calls.\nint f(int a);", "int f(int, bool);"),
              "f: expected int f(int a), found int f(int, bool)\n");
    EXPECT_EQ(compare("struct C {\n/// Calls.\nint f(); };", "struct B { int f(); };"), "");
    EXPECT_EQ(compare("/// The result is not looked at.\nint f();", "void f();"), "");
    EXPECT_EQ(compare("int f();\n/// No source of the module names it.\nenum E { };", ""), "");
}

TEST_F(PortingListReaderTest, CollectedNames_ExcludeSpecialMembersAndForwardDeclarations)
{
    EXPECT_EQ(collectNames(parseDeclarations("class D;\n/// Known.\nclass E;\nstruct C { C(); ~C(); int m(); };")),
              (Names{"C", "C::m", "E"}));
}

TEST_F(PortingListReaderTest, MissingNames_CauseOneComplaintEach)
{
    EXPECT_EQ(complainAboutMissing({"a", "b"}, {"b", "c"}, "gone"), std::vector<std::string>{"a: gone"});
}

} // namespace
} // namespace Tests
