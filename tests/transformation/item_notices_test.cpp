// Items and collections are values of clients: no reactor is notified of them.
#include "transformation/config_items.h"
#include "transformation/transformation_test.h"

namespace Tests {
namespace {

class ItemNotices : public TransformationTest {
protected:
    ItemNotices() { EXPECT_EQ(reactor.add(), Qeapp::eOk); }
};

TEST_F(ItemNotices, ItemOperationsNotifyNoReactor)
{
    const Ptr<ConfigItem> item = newCompleteItem(L"name");
    setFields(*item.get(), readFields(*item.get()));
    item->FromXmlString(item->ToXmlString().c_str());
    EXPECT_EQ(log, Notices());
}

TEST_F(ItemNotices, CollectionOperationsNotifyNoReactor)
{
    const Ptr<ConfigCollection> collection = newCollection();
    collection->Add(newCompleteItem(L"name").get());
    EXPECT_EQ(readFields(*collection.get()).size(), 1U);
    collection->FromXmlString(collection->ToXmlString().c_str());
    EXPECT_EQ(collection->GetCount(), 1);
    collection->Clear();
    EXPECT_EQ(log, Notices());
}

} // namespace
} // namespace Tests
