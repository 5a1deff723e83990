// How often the module asks the host for the product's root in the registry.
#include "transformation/registry_settings_test.h"

namespace Tests {
namespace {

/// Returns another root at each call.
class ChangingRoot final : public QeDbHostApplicationServices {
public:
    QeDbDatabase* workingDatabase() const override { return nullptr; }
    void setWorkingDatabase(QeDbDatabase*) override {}
    const wchar_t* getUserRegistryProductRootKey() const override
    {
        root_ = kProduct + std::to_wstring(++calls);
        return root_.c_str();
    }

    mutable int calls = 0;

private:
    mutable std::wstring root_;
};

class RegistryRoot : public RegistrySettingsTest {
protected:
    ChangingRoot services;
    const ScopedHostParts parts{{.otherApplicationServices = &services}};
};

TEST_F(RegistryRoot, IsQueriedOnceByEachOperation)
{
    EXPECT_TRUE(write(item(1) + item(2)));
    EXPECT_EQ(services.calls, 1);
    EXPECT_TRUE(read().read);
    EXPECT_EQ(services.calls, 2);
    static_cast<void>(Orvel::registrySettingsKey()); // only counts the call
    EXPECT_EQ(services.calls, 3);
}

TEST_F(RegistryRoot, IsQueriedOnceWhenTheUsersStoreIsCleared)
{
    EXPECT_TRUE(Cs::ClearCsTransformationConfig(Cs::CsTransformationConfigTargetType::User));
    EXPECT_EQ(services.calls, 1);
}

} // namespace
} // namespace Tests
