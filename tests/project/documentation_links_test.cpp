#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "project/markdown_links.h"
#include "project/source_tree.h"
#include "support/platform_test.h"

namespace Tests {
namespace {

using DocumentationLinksTest = PlatformTest;
using Targets = std::vector<std::string>;

std::vector<SourceFile> readDocumentation()
{
    std::vector<SourceFile> pages = readFiles(ORVEL_SOURCE_DIR, {"docs"}, {".md"});
    for (SourceFile& page : readFiles(ORVEL_SOURCE_DIR, {"examples", "fuzz", "scripts", "tests"}, {".md"}))
        pages.push_back(std::move(page));
    for (const char* page : {"README.md", "CHANGELOG.md", "CONTRIBUTING.md"})
        pages.push_back(readFile(ORVEL_SOURCE_DIR, page));
    return pages;
}

/// The complaints about a page docs/page.md with the text.
std::vector<std::string> findComplaints(const std::string& text)
{
    return findBrokenLinks(ORVEL_SOURCE_DIR, {"docs/page.md", text});
}

TEST_F(DocumentationLinksTest, EveryRelativeLink_LeadsToAFileAndToAHeading)
{
    std::vector<std::string> complaints;
    for (const SourceFile& page : readDocumentation())
        for (std::string& one : findBrokenLinks(ORVEL_SOURCE_DIR, page))
            complaints.push_back(std::move(one));
    EXPECT_EQ(joinLines(complaints), "");
}

TEST_F(DocumentationLinksTest, Repository_HasAReadme)
{
    EXPECT_TRUE(std::filesystem::is_regular_file(std::filesystem::path(ORVEL_SOURCE_DIR) / "README.md"));
}

TEST_F(DocumentationLinksTest, LinksImagesAndReferences_AreRead)
{
    EXPECT_EQ(findLinks("[a](one.md), ![b](two.png) and [c](<three.md> \"title\").\n[label]: four.md\n"),
              (Targets{"one.md", "two.png", "three.md", "four.md"}));
}

TEST_F(DocumentationLinksTest, CodeThatLooksLikeALink_IsNotRead)
{
    EXPECT_EQ(findLinks("`[](int x)`\n```\n[](int y)\n```\n[a](b.md)\n"), Targets{"b.md"});
}

TEST_F(DocumentationLinksTest, LinkToAnExistingFile_IsAccepted)
{
    EXPECT_EQ(joinLines(findComplaints("[a](../CMakeLists.txt), [b](../CMakeLists.txt#part) and [c](../src)")), "");
}

TEST_F(DocumentationLinksTest, LinkToAMissingFile_IsBroken)
{
    EXPECT_EQ(joinLines(findComplaints("[a](nowhere.md)")), "docs/page.md: nowhere.md leads to no file\n");
}

TEST_F(DocumentationLinksTest, LinkOutOfTheRepository_IsBroken)
{
    EXPECT_EQ(findComplaints("[a](../../x.md) and [b](/etc/passwd)").size(), 2U);
}

TEST_F(DocumentationLinksTest, LinkToAHeading_IsAccepted)
{
    EXPECT_EQ(joinLines(findComplaints("[a](#what-is-it-the-c-1)\n\n## What is `it`: the C++ 1?\n")), "");
    EXPECT_EQ(joinLines(findComplaints("[a](testing.md#the-sweep)")), "");
}

TEST_F(DocumentationLinksTest, LinkToAMissingHeading_IsBroken)
{
    EXPECT_EQ(joinLines(findComplaints("[a](#part)\n```\n# Part\n```\n")), "docs/page.md: #part leads to no heading\n");
    EXPECT_EQ(joinLines(findComplaints("[a](testing.md#nowhere)")),
              "docs/page.md: testing.md#nowhere leads to no heading\n");
}

TEST_F(DocumentationLinksTest, LinksToOtherHosts_AreNotChecked)
{
    EXPECT_EQ(joinLines(findComplaints("[a](https://example.org/x) [b](mailto:a@example.org)")), "");
}

} // namespace
} // namespace Tests
