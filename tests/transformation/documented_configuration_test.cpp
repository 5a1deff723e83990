// The examples on the page about configuration texts.
#include "embedded/base/text.h"
#include "storage/documented_example.h"
#include "support/platform_test.h"
#include "transformation/reference_item_parser.h"

namespace Tests {
namespace {

const std::string kConfigurationPage = "transformation-configuration.md";

/// Removes the indentation and the remark of a line.
std::string stripLine(const std::string& line)
{
    const std::size_t begin = line.find_first_not_of(' ');
    const std::string content = line.substr(begin, line.find(" //") - begin);
    return content.substr(0, content.find_last_not_of(' ') + 1);
}

std::string onOneLine(const std::string& block)
{
    std::string text;
    std::istringstream lines(block);
    for (std::string line; std::getline(lines, line);)
        text += stripLine(line);
    return text;
}

std::string formatItems(const std::vector<ItemFields>& items)
{
    std::string lines;
    for (const ItemFields& item : items)
        lines += (lines.empty() ? "" : "\n") + formatFields(item);
    return lines;
}

class DocumentedConfiguration : public PlatformTest {
protected:
    const Ptr<ConfigCollection> collection = newCollection();

    void read(const std::string& text) { collection->FromXmlString(Embedded::wideFromUtf8(text).c_str()); }
};

TEST_F(DocumentedConfiguration, DocumentedTextIsReadAndWrittenUnchanged)
{
    const std::string text = onOneLine(DocumentedExample(kConfigurationPage, "configuration").text());
    read(text);
    EXPECT_EQ(Embedded::utf8FromWide(collection->ToXmlString()), text);
}

TEST_F(DocumentedConfiguration, DocumentedTextIsReadAsTheDocumentedItems)
{
    read(onOneLine(DocumentedExample(kConfigurationPage, "configuration").text()));
    const DocumentedExample items(kConfigurationPage, "items");
    EXPECT_EQ(formatItems(readFields(*collection)), items.text())
        << items.correction(formatItems(readFields(*collection)));
}

TEST_F(DocumentedConfiguration, DocumentedHandmadeTextIsReadAsTheDocumentedItems)
{
    read(DocumentedExample(kConfigurationPage, "handmade").text());
    const DocumentedExample items(kConfigurationPage, "handmade-items");
    EXPECT_EQ(formatItems(readFields(*collection)), items.text())
        << items.correction(formatItems(readFields(*collection)));
}

} // namespace
} // namespace Tests
