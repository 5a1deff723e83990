#include "project/porting_list.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/platform_test.h"

namespace Tests {
namespace {

const std::vector<std::string> kHeaders{"host.h", "spatial_reference.h", "foundation.h", "windows.h"};

/// The module's own names with a prefix of the platform: the host looks for them in the module.
const Names kModulesOwn{"qerxEntryPoint", "qerxGetApiVersion"};

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
            addAll(listed_, listedNames(page_, header));
            addAll(declared_, declaredIn(header));
        }
        for (const SourceFile& file : readFiles(ORVEL_SOURCE_DIR, {"platform"}, {".h"}))
            if (file.path != "platform/export.h")
                addAll(interface_, platformNames(file.text));
    }

    static Names declaredIn(const std::string& header)
    {
        return platformNames(readFile(ORVEL_SOURCE_DIR, "tests/porting/platform/" + header).text);
    }

    const std::string page_ = readFile(ORVEL_SOURCE_DIR, "docs/porting.md").text;
    const Usage usage_ = usageIn(readFiles(ORVEL_SOURCE_DIR, {"src"}, {".h", ".cpp"}));
    Names listed_;
    Names declared_;
    Names interface_; // of the project's own platform
};

class PortingListReaderTest : public PlatformTest {};

Usage usageOf(const std::string& source)
{
    return usageIn({{"src/a.cpp", source}});
}

TEST_F(PortingListTest, EveryHeadersList_IsWhatTheMinimalHeaderDeclares)
{
    for (const std::string& header : kHeaders) {
        const Names listed = listedNames(page_, header);
        EXPECT_EQ(joined(missing(declaredIn(header), listed, "not in the list of " + header)), "");
        EXPECT_EQ(joined(missing(listed, declaredIn(header), "listed for " + header + ", which does not declare it")),
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
    EXPECT_EQ(joined(missing(unused, {}, "listed, and used by no source")), "");
}

TEST_F(PortingListTest, EveryPlatformNameThatTheSourcesUse_IsListed)
{
    ASSERT_FALSE(interface_.empty());
    EXPECT_EQ(joined(missing(usedFreeNames(interface_, usage_), listed_, "used, and not listed")), "");
}

TEST_F(PortingListTest, EveryNameWithThePlatformsPrefixes_IsListedOrTheModulesOwn)
{
    EXPECT_EQ(joined(missing(strangers(listed_, usage_), kModulesOwn, "used, and not listed")), "");
}

TEST_F(PortingListTest, TheModulesOwnNames_AreInTheSourcesAndNotListed)
{
    EXPECT_EQ(joined(missing(kModulesOwn, strangers(listed_, usage_), "listed, or not in the sources")), "");
}

TEST_F(PortingListTest, EveryMinimalDeclaration_HasItsNameFromThePlatform)
{
    Names parts;
    for (const std::string& name : interface_)
        parts.insert(name.substr(name.rfind(':') + 1));
    Names missingParts;
    for (const std::string& name : declared_)
        if (!parts.contains(name.substr(name.rfind(':') + 1)))
            missingParts.insert(name);
    missingParts.erase("QeRxDynamicLinker::desc"); // declared by a macro there
    EXPECT_EQ(joined(missing(missingParts, {}, "unknown to the project's own platform")), "");
}

TEST_F(PortingListReaderTest, ListedNames_AreThoseOfTheFirstColumnBelowTheHeadersHeading)
{
    const std::string page = "## `a.h`: things\n"
                             "Text with `notThis`.\n"
                             "| name | what |\n|---|---|\n"
                             "| `first`, `C::second` | gives `notThat` |\n"
                             "### More\n"
                             "| `third` | |\n"
                             "## `b.h`\n"
                             "| `other` | |\n";
    EXPECT_EQ(listedNames(page, "a.h"), (Names{"first", "C::second", "third"}));
    EXPECT_EQ(listedNames(page, "b.h"), Names{"other"});
    EXPECT_EQ(listedNames(page, "c.h"), Names{});
}

TEST_F(PortingListReaderTest, LibrarysNames_ComeWithoutTheirNamespace)
{
    EXPECT_EQ(platformNames("namespace Zentara::Infrastructure::SpatialReference { enum Status { statusOk }; }\n"
                            "namespace Qeapp { enum { eOk }; }"),
              (Names{"Status", "statusOk", "Qeapp::eOk"}));
}

TEST_F(PortingListReaderTest, Member_IsUsedBehindAnObjectAPointerOrItsClass)
{
    const Names declared{"C", "C::m"};
    EXPECT_TRUE(isUsed("C::m", declared, usageOf("c.m();")));
    EXPECT_TRUE(isUsed("C::m", declared, usageOf("c->m();")));
    EXPECT_TRUE(isUsed("C::m", declared, usageOf("C::m();")));
    EXPECT_TRUE(isUsed("C::m", declared, usageOf("struct D : C { int m(int) const override; };")));
    EXPECT_FALSE(isUsed("C::m", declared, usageOf("m(); int m = 0; struct D { int m(); int n() override; };")));
    EXPECT_FALSE(isUsed("C::m", declared, usageOf("// c.m()\n\"c.m()\"; c.mm();")));
}

TEST_F(PortingListReaderTest, Class_IsUsedByNameOrByAMember)
{
    const Names declared{"C", "C::m", "CC"};
    EXPECT_TRUE(isUsed("C", declared, usageOf("C c;")));
    EXPECT_TRUE(isUsed("C", declared, usageOf("c()->m();")));
    EXPECT_FALSE(isUsed("C", declared, usageOf("CC c; c.n();")));
}

TEST_F(PortingListReaderTest, NameInANamespace_IsUsedBehindIt)
{
    const Names declared{"N::e"};
    EXPECT_TRUE(isUsed("N::e", declared, usageOf("return N::e;")));
    EXPECT_FALSE(isUsed("N::e", declared, usageOf("return M::e + e;")));
}

TEST_F(PortingListReaderTest, UsedFreeNames_LeaveMembersAndTheUnusedOut)
{
    const Names declared{"C", "C::m", "call", "N::e", "unused"};
    EXPECT_EQ(usedFreeNames(declared, usageOf("C c; c.m(); call(N::e);")), (Names{"C", "call", "N::e"}));
}

TEST_F(PortingListReaderTest, Strangers_AreThePrefixedNamesThatNoListedNameHolds)
{
    const std::string source = "QeDbThing t; qedbCall(); Qeapp::eOk; qeutCall(); FqObject o; quite(); Query q; kQeKey;";
    EXPECT_EQ(strangers({"QeDbThing", "Qeapp::eOk"}, usageOf(source)),
              (Names{"FqObject", "kQeKey", "qedbCall", "qeutCall"}));
}

TEST_F(PortingListReaderTest, MissingNames_AreNamedWithWhatIsWrong)
{
    EXPECT_EQ(missing({"a", "b"}, {"b", "c"}, "gone"), std::vector<std::string>{"a: gone"});
}

} // namespace
} // namespace Tests
