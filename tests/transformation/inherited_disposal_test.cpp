// A client's classes inherit the disposal of the public classes.
#include "support/platform_test.h"
#include "transformation/client_classes.h"

namespace Tests {
namespace {

class InheritedDisposal : public PlatformTest {
protected:
    static long countObjects() { return Embedded::ResourceCounters::now()[Embedded::ResourceKind::disposableObject]; }
    const long before = countObjects();
};

TEST_F(InheritedDisposal, DisposeDeletesAClientItem)
{
    ConfigItem* const item = new ClientItem;
    ASSERT_EQ(countObjects(), before + 1);
    item->Dispose();
    EXPECT_EQ(countObjects(), before);
}

TEST_F(InheritedDisposal, DisposeDeletesAClientCollection)
{
    ConfigCollection* const collection = new ClientCollection;
    ASSERT_EQ(countObjects(), before + 1);
    collection->Dispose();
    EXPECT_EQ(countObjects(), before);
}

TEST_F(InheritedDisposal, LastReleaseDeletesAClientItem)
{
    ConfigItem* const item = new ClientItem;
    EXPECT_EQ(item->Release(), 0);
    EXPECT_EQ(countObjects(), before);
}

} // namespace
} // namespace Tests
