// Classes of a client, which inherit how the public classes are disposed.
#include "support/platform_test.h"
#include "transformation/client_classes.h"

namespace Tests {
namespace {

class InheritedDisposal : public PlatformTest {
protected:
    static long objects() { return Embedded::ResourceCounters::now()[Embedded::ResourceKind::disposableObject]; }
    const long before = objects();
};

TEST_F(InheritedDisposal, DisposeDeletesAClientItem)
{
    ConfigItem* const item = new ClientItem;
    ASSERT_EQ(objects(), before + 1);
    item->Dispose();
    EXPECT_EQ(objects(), before);
}

TEST_F(InheritedDisposal, DisposeDeletesAClientCollection)
{
    ConfigCollection* const collection = new ClientCollection;
    ASSERT_EQ(objects(), before + 1);
    collection->Dispose();
    EXPECT_EQ(objects(), before);
}

TEST_F(InheritedDisposal, LastReleaseDeletesAClientItem)
{
    ConfigItem* const item = new ClientItem;
    EXPECT_EQ(item->Release(), 0);
    EXPECT_EQ(objects(), before);
}

} // namespace
} // namespace Tests
