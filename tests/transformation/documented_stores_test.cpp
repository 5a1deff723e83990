// The examples on the page about the stores of configurations.
#include <fstream>
#include <iterator>
#include <sstream>

#include "storage/documented_example.h"
#include "transformation/drawing_config.h"
#include "transformation/registry_settings.h"
#include "transformation/registry_strings.h"
#include "transformation/user_settings_file.h"
#include "transformation_test.h"

namespace Tests {
namespace {

const std::string kStoresPage = "transformation-stores.md";

using DocumentedStores = TransformationTest;

TEST_F(DocumentedStores, DrawingsChain_IsTheDocumentedChain)
{
    const Items documented = DocumentedExample(kStoresPage, "drawing-configuration").chain();
    ASSERT_EQ(documented.size(), 1U);
    const auto text = std::get<std::wstring>(documented.front().value);
    ASSERT_TRUE(Orvel::WriteDrawingTransformationConfig(text.c_str()));
    Orvel::ResbufChain chain;
    ASSERT_TRUE(Orvel::CResbufDictionary(Orvel::kTransformationConfigDictionary, nullptr)
                    .GetResbuf(Orvel::kTransformationConfigKey, chain.put()));
    EXPECT_EQ(readChain(chain.get()), documented);
}

TEST_F(DocumentedStores, SettingsFile_HasTheDocumentedBytes)
{
    ASSERT_TRUE(Orvel::WriteUserTransformationSettings(L"<Item>\u00E9</Item><Item>\U0001F310</Item> rest"));
    std::ifstream file(settingsFile(), std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    EXPECT_EQ(Bytes(bytes.begin(), bytes.end()), DocumentedExample(kStoresPage, "settings-file").bytes());
}

TEST_F(DocumentedStores, RegistryValues_AreTheDocumentedValues)
{
    ASSERT_TRUE(Orvel::WriteRegistryTransformationSettings(L"<Item>one</Item><Item>two</Item> rest"));
    std::vector<std::wstring> names;
    ASSERT_TRUE(Orvel::RegistryEnumValueNames(HKEY_CURRENT_USER, Orvel::registrySettingsKey(), names));
    std::wstring lines;
    for (const std::wstring& name : names) {
        std::wstring value;
        ASSERT_TRUE(Orvel::RegistryQueryString(HKEY_CURRENT_USER, Orvel::registrySettingsKey(), name, value));
        lines += (lines.empty() ? L"" : L"\n") + name + L"=" + value;
    }
    const DocumentedExample example(kStoresPage, "registry-values");
    EXPECT_EQ(Embedded::utf8FromWide(lines), example.text()) << example.correction(Embedded::utf8FromWide(lines));
}

} // namespace
} // namespace Tests
