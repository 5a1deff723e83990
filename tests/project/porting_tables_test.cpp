#include "project/porting_tables.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

#include "project/source_tree.h"
#include "support/platform_test.h"

namespace Tests {
namespace {

const std::vector<std::string> kHeaders{"host.h", "spatial_reference.h", "foundation.h", "win32.h"};
const std::string kPage = "docs/porting.md";

class PortingTablesTest : public PlatformTest {
protected:
    static std::vector<Declaration> readKit(const std::string& header)
    {
        return parseDeclarations(readFile(ORVEL_SOURCE_DIR, "examples/port/platform/" + header).text);
    }

    /// The page as the headers of the kit make it.
    static std::string makePage(std::string page)
    {
        for (const std::string& header : kHeaders)
            page = replacePortingTables(page, header, formatPortingTables(readKit(header)));
        return page;
    }
};

/// With ORVEL_RENEW_PAGES in the environment it writes the page first.
TEST_F(PortingTablesTest, PageOnPorting_HasTheTablesOfTheKitsHeaders)
{
    std::string page = readFile(ORVEL_SOURCE_DIR, kPage).text;
    if (std::getenv("ORVEL_RENEW_PAGES") != nullptr) {
        page = makePage(page);
        std::ofstream(std::string(ORVEL_SOURCE_DIR) + "/" + kPage, std::ios::binary) << page;
    }
    for (const std::string& header : kHeaders) {
        const std::string expected = formatPortingTables(readKit(header));
        ASSERT_NE(expected, "") << header;
        EXPECT_EQ(findPortingTables(page, header), expected)
            << kPage << " differs from examples/port/platform/" << header << ". To renew the page, run\n"
            << "    ORVEL_RENEW_PAGES=1 build/release/bin/project_tests "
               "--gtest_filter='PortingTablesTest.PageOnPorting*'";
    }
}

TEST_F(PortingTablesTest, EachSection_IsATableOfTheCommentedDeclarations)
{
    EXPECT_EQ(formatPortingTables(parseDeclarations("#pragma once\n\n"
                                                    "// Things\n\n"
                                                    "/// One\n/// thing.\nclass A : public B, private D {\npublic:\n"
                                                    "    /// Does it.\n    int f(int x = 1) const { return x; }\n"
                                                    "    int g();\n};\n\n"
                                                    "// Numbers\n\n"
                                                    "/// The number is fixed.\ninline constexpr int kOne = 1;\n"
                                                    "/// Any.\ninline constexpr int kTwo = 2;\n")),
              "### Things\n\n"
              "| name | declaration | what is expected |\n|---|---|---|\n"
              "| `A` | `class A : public B` | One thing. |\n"
              "| `A::f` | `int f(int x = 1) const` | Does it. |\n"
              "\n### Numbers\n\n"
              "| name | declaration | what is expected |\n|---|---|---|\n"
              "| `kOne` | `int kOne = 1` | The number is fixed. |\n"
              "| `kTwo` | `int kTwo` | Any. |\n");
}

TEST_F(PortingTablesTest, Tables_LieBetweenTheMarksOfTheirHeader)
{
    const std::string page = "a\n<!-- made of examples/port/platform/a.h -->\nold\n<!-- end -->\n"
                             "<!-- made of examples/port/platform/b.h -->\nother\n<!-- end -->\nz\n";
    EXPECT_EQ(findPortingTables(page, "a.h"), "old\n");
    EXPECT_EQ(findPortingTables(page, "c.h"), "");
    EXPECT_EQ(findPortingTables(replacePortingTables(page, "a.h", "new\n"), "a.h"), "new\n");
    EXPECT_EQ(findPortingTables(replacePortingTables(page, "a.h", "new\n"), "b.h"), "other\n");
    EXPECT_EQ(replacePortingTables(page, "c.h", "new\n"), page);
}

} // namespace
} // namespace Tests
