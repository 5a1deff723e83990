// docs/name-space.md lists every name that the module uses outside itself.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include "project/source_tree.h"
#include "project/text_literals.h"
#include "support/platform_test.h"

namespace Tests {
namespace {

using NameSet = std::set<std::string>;
using TextLiterals = PlatformTest;

/// Texts in the sources that name nothing outside the module.
const NameSet kTextsThatAreNoNames{"C", "default", // of the language
                                   "rt", "wt"};    // the modes of opening the settings file

/// A part of this text is a part of an item's text (docs/formats/transformation-configuration.md).
const std::string kItem =
    "<Item><Version></Version><SourceCs></SourceCs><TargetCs></TargetCs><Name></Name><Type></Type>"
    "<Note></Note></Item>";

/// The key of a registry value is the only text of this kind that is a name.
const std::string kRegistryValue = "Item";

bool hasALetter(const std::string& text)
{
    return std::ranges::any_of(text, [](unsigned char c) { return std::isalpha(c) != 0; });
}

/// Its texts are what the compiler says of a wrong port.
const std::string kRequirements = "src/storage/platform_requirements.cpp";

/// The names in the texts of the module's sources.
NameSet collectNamesInTexts()
{
    NameSet names;
    for (const SourceFile& file : readFiles(ORVEL_SOURCE_DIR, {"src"}, {".h", ".cpp"}))
        for (const std::string& text : collectTextLiterals(file.text))
            if (file.path != kRequirements && hasALetter(text) && !kTextsThatAreNoNames.contains(text) &&
                (text == kRegistryValue || kItem.find(text) == std::string::npos))
                names.insert(text);
    return names;
}

/// Each match's first group.
NameSet collectMatches(const std::string& text, const std::string& expression)
{
    const std::regex pattern(expression);
    NameSet names;
    for (std::sregex_iterator match(text.begin(), text.end(), pattern), end; match != end; ++match)
        names.insert((*match)[1]);
    return names;
}

/// The exports for the linker, without the patterns of type information.
NameSet collectExports()
{
    const std::string map = readFile(ORVEL_SOURCE_DIR, "src/exported_names.map").text;
    return collectMatches(map, R"(\n +([A-Za-z][A-Za-z:]*?)(?:::\*)?;)");
}

/// The macros of the public headers and the folders that they include from.
NameSet collectNamesInPublicHeaders()
{
    NameSet names;
    for (const SourceFile& file : readFiles(ORVEL_SOURCE_DIR, {"src/coordsys"}, {".h"}))
        if (file.path.starts_with("src/coordsys/orvel_")) {
            names.merge(collectMatches(file.text, R"(#define (\w+))"));
            names.merge(collectMatches(file.text, R"(defined\(([A-Z]\w+)\))"));
            names.merge(collectMatches(file.text, R"re(#include "([^/"]+/))re"));
        }
    return names;
}

NameSet listedNames()
{
    return collectMatches(readFile(ORVEL_SOURCE_DIR, "docs/name-space.md").text, R"(\n\| `([^`]+)` \|)");
}

class NameSpacePage : public PlatformTest {};

TEST_F(NameSpacePage, ListsTheNamesInTheSourcesAndNoOthers)
{
    const NameSet texts = collectNamesInTexts();
    const NameSet exports = collectExports();
    const NameSet inHeaders = collectNamesInPublicHeaders();
    ASSERT_FALSE(texts.empty() || exports.empty() || inHeaders.empty());
    NameSet used = texts;
    used.insert(exports.begin(), exports.end());
    used.insert(inHeaders.begin(), inHeaders.end());
    EXPECT_EQ(listedNames(), used);
}

TEST_F(NameSpacePage, TextsThatAreNoNames_AreInTheSources)
{
    NameSet unused = kTextsThatAreNoNames;
    for (const SourceFile& file : readFiles(ORVEL_SOURCE_DIR, {"src"}, {".h", ".cpp"}))
        for (const std::string& text : collectTextLiterals(file.text))
            unused.erase(text);
    EXPECT_EQ(unused, NameSet{});
}

TEST_F(TextLiterals, AreReadWithTheirEscapesAndWithoutComments)
{
    const std::string source = "#include \"a.h\"\n"
                               "x = L\"\\\\A\\\\B\"; // \"comment\"\n"
                               "y = \"say \\\"hi\\\"\"; c = '\"'; z = \"//\" \"end\";\n";
    EXPECT_EQ(collectTextLiterals(source), (std::vector<std::string>{"\\A\\B", "say hi", "//", "end"}));
}

} // namespace
} // namespace Tests
