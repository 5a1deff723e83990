#include "project/porting_list.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/platform_test.h"

namespace Tests {
namespace {

const std::vector<std::string> kHeaders{"host.h", "spatial_reference.h", "foundation.h", "win32.h"};

/// The module's own names with a prefix of the platform: the host looks for them in the module.
const Names kModuleNames{"qerxEntryPoint", "qerxGetApiVersion"};

void addAll(Names& names, const Names& more)
{
    names.insert(more.begin(), more.end());
}

/// The three lists of the repository.
class PortingListTest : public PlatformTest {
protected:
    PortingListTest()
    {
        for (const std::string& header : kHeaders) {
            addAll(listed_, parseListedNames(page_, header));
            addAll(declared_, declaredNamesOfHeader(header));
        }
        for (const SourceFile& file : readFiles(ORVEL_SOURCE_DIR, {"platform"}, {".h"}))
            if (file.path != "platform/export.h")
                addAll(interface_, parsePlatformNames(file.text));
    }

    static Names declaredNamesOfHeader(const std::string& header)
    {
        return parsePlatformNames(readFile(ORVEL_SOURCE_DIR, "tests/porting/platform/" + header).text);
    }

    const std::string page_ = readFile(ORVEL_SOURCE_DIR, "docs/porting.md").text;
    const Usage usage_ = collectUsage(readFiles(ORVEL_SOURCE_DIR, {"src"}, {".h", ".cpp"}));
    Names listed_;
    Names declared_;
    Names interface_; // of the project's own platform
};

class PortingListReaderTest : public PlatformTest {};

Usage parseUsage(const std::string& source)
{
    return collectUsage({{"src/a.cpp", source}});
}

TEST_F(PortingListTest, ListOfEachHeader_MatchesTheMinimalHeader)
{
    for (const std::string& header : kHeaders) {
        const Names listed = parseListedNames(page_, header);
        EXPECT_EQ(
            joinLines(complainAboutMissing(declaredNamesOfHeader(header), listed, "not in the list of " + header)), "");
        EXPECT_EQ(joinLines(complainAboutMissing(listed, declaredNamesOfHeader(header),
                                                 "listed for " + header + ", which does not declare it")),
                  "");
    }
}

TEST_F(PortingListTest, EveryListedName_IsUsedByTheSources)
{
    ASSERT_FALSE(listed_.empty());
    Names unused;
    for (const std::string& name : listed_)
        if (!isUsed(name, listed_, usage_))
            unused.insert(name);
    EXPECT_EQ(joinLines(complainAboutMissing(unused, {}, "listed, and used by no source")), "");
}

TEST_F(PortingListTest, EveryPlatformNameThatTheSourcesUse_IsListed)
{
    ASSERT_FALSE(interface_.empty());
    EXPECT_EQ(joinLines(complainAboutMissing(findUsedFreeNames(interface_, usage_), listed_, "used, and not listed")),
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

TEST_F(PortingListTest, EveryMinimalDeclaration_ExistsInThePlatform)
{
    Names parts;
    for (const std::string& name : interface_)
        parts.insert(name.substr(name.rfind(':') + 1));
    Names missingParts;
    for (const std::string& name : declared_)
        if (!parts.contains(name.substr(name.rfind(':') + 1)))
            missingParts.insert(name);
    missingParts.erase("QeRxDynamicLinker::desc"); // declared by a macro there
    EXPECT_EQ(joinLines(complainAboutMissing(missingParts, {}, "unknown to the project's own platform")), "");
}

TEST_F(PortingListReaderTest, ListedNames_AreInTheFirstColumnBelowTheHeading)
{
    const std::string page = "## `a.h`: things\n"
                             "Text with `notThis`.\n"
                             "| name | what |\n|---|---|\n"
                             "| `first`, `C::second` | gives `notThat` |\n"
                             "### More\n"
                             "| `third` | |\n"
                             "## `b.h`\n"
                             "| `other` | |\n";
    EXPECT_EQ(parseListedNames(page, "a.h"), (Names{"first", "C::second", "third"}));
    EXPECT_EQ(parseListedNames(page, "b.h"), Names{"other"});
    EXPECT_EQ(parseListedNames(page, "c.h"), Names{});
}

TEST_F(PortingListReaderTest, NamesOfTheLibrary_HaveNoNamespace)
{
    EXPECT_EQ(parsePlatformNames("namespace Zentara::Infrastructure::SpatialReference { enum Status { statusOk }; }\n"
                                 "namespace Qeapp { enum { eOk }; }"),
              (Names{"Status", "statusOk", "Qeapp::eOk"}));
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

TEST_F(PortingListReaderTest, MissingNames_CauseOneComplaintEach)
{
    EXPECT_EQ(complainAboutMissing({"a", "b"}, {"b", "c"}, "gone"), std::vector<std::string>{"a: gone"});
}

} // namespace
} // namespace Tests
