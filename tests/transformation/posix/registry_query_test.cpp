// Runs the query on the page about the registry's file.
#include "storage/documented_example.h"
#include "support/posix/sql_query.h"
#include "transformation/registry_settings_test.h"

namespace Tests {
namespace {

class RegistryQuery : public RegistrySettingsTest {};

TEST_F(RegistryQuery, DocumentedQuery_ShowsTheStoredConfiguration)
{
    ASSERT_TRUE(write(L"<Item>one</Item><Item>two</Item>"));
    const auto block = [](const char* label) { return DocumentedExample("registry-stand-in.md", label).text(); };
    EXPECT_EQ(sqlQuery(folder.path() / "registry.db", block("registry-query")), block("registry-answer") + '\n');
}

} // namespace
} // namespace Tests
