// The calls for the product's root in the registry.
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
        root_ = kProduct + std::to_wstring(++asked);
        return root_.c_str();
    }

    mutable int asked = 0;

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
    EXPECT_EQ(services.asked, 1);
    EXPECT_TRUE(read().read);
    EXPECT_EQ(services.asked, 2);
    static_cast<void>(Orvel::registrySettingsKey()); // the count tells
    EXPECT_EQ(services.asked, 3);
}

TEST_F(RegistryRoot, IsQueriedOnceWhenTheUsersStoreIsCleared)
{
    EXPECT_TRUE(Cs::ClearCsTransformationConfig(Cs::CsTransformationConfigTargetType::User));
    EXPECT_EQ(services.asked, 1);
}

} // namespace
} // namespace Tests
