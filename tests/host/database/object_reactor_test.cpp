#include "embedded/diagnostics/resource_counters.h"
#include "host/database/drawing_test.h"

namespace Tests {
namespace {

using Embedded::ResourceCounters;
using Embedded::ResourceKind;

/// Records its notifications.
class Listener final : public QeDbObjectReactor {
public:
    void modified(const QeDbObject* object) override
    {
        notifications += "modified ";
        wasReadable = object->isReadEnabled();
        if (removesItselfFrom != nullptr)
            removesItselfFrom->removeReactor(this);
    }
    void erased(const QeDbObject* /*object*/, bool erasing) override
    {
        notifications += erasing ? "erased " : "unerased ";
    }

    std::string notifications;
    bool wasReadable = false;
    QeDbObject* removesItselfFrom = nullptr;
};

class ObjectReactor : public DrawingTest {
protected:
    void listenTo(QeDbObjectId id) { open(id)->addReactor(&listener); }

    Listener listener;
    QeDbObjectId xrecord = addXrecord(L"key");
};

TEST_F(ObjectReactor, Write_IsReportedWhenTheObjectIsClosed)
{
    listenTo(xrecord);
    auto writer = open<QeDbXrecord>(xrecord, QeDb::kForWrite);
    EXPECT_EQ(writer->setFromRbChain(nullptr), Qeapp::eOk);
    EXPECT_EQ(listener.notifications, "");
    writer.close();
    EXPECT_EQ(listener.notifications, "modified ");
    EXPECT_TRUE(listener.wasReadable);
}

TEST_F(ObjectReactor, ReactorWithoutOverrides_DoesNotDisturbOthers)
{
    class DefaultReactor final : public QeDbObjectReactor {};
    DefaultReactor silent;
    open(xrecord)->addReactor(&silent);
    listenTo(xrecord);
    writeText(xrecord, L"other");
    EXPECT_EQ(open(xrecord, QeDb::kForWrite)->erase(), Qeapp::eOk);
    EXPECT_EQ(listener.notifications, "modified erased modified "); // the last one at the close
}

TEST_F(ObjectReactor, CloseWithoutWrite_IsNotReported)
{
    listenTo(xrecord);
    open(xrecord, QeDb::kForWrite).close();
    EXPECT_EQ(listener.notifications, "");
}

TEST_F(ObjectReactor, EraseAndUnerase_AreReported)
{
    listenTo(xrecord);
    const auto writer = open(xrecord, QeDb::kForWrite);
    EXPECT_EQ(writer->erase(), Qeapp::eOk);
    EXPECT_EQ(writer->erase(false), Qeapp::eOk);
    EXPECT_EQ(listener.notifications, "erased unerased ");
}

TEST_F(ObjectReactor, ReplacedEntry_IsReportedAsErased)
{
    listenTo(xrecord);
    addXrecord(L"key");
    EXPECT_EQ(listener.notifications, "erased ");
}

TEST_F(ObjectReactor, Undo_IsNotReported)
{
    listenTo(xrecord);
    begin();
    writeText(xrecord, L"other");
    listener.notifications.clear();
    abort();
    EXPECT_EQ(listener.notifications, "");
}

TEST_F(ObjectReactor, ReactorAddedTwice_IsNotifiedAndCountedOnce)
{
    const long before = ResourceCounters::now()[ResourceKind::objectReactor];
    listenTo(xrecord);
    listenTo(xrecord);
    EXPECT_EQ(ResourceCounters::now()[ResourceKind::objectReactor], before + 1);
    erase(xrecord);
    EXPECT_EQ(listener.notifications, "erased modified ");
}

TEST_F(ObjectReactor, RemovedReactor_IsNotNotified)
{
    listenTo(xrecord);
    open(xrecord)->removeReactor(&listener);
    writeText(xrecord, L"other");
    EXPECT_EQ(listener.notifications, "");
}

TEST_F(ObjectReactor, Reactor_CanRemoveItselfWhileItIsNotified)
{
    listenTo(xrecord);
    listener.removesItselfFrom = open(xrecord).get();
    writeText(xrecord, L"one");
    writeText(xrecord, L"two");
    EXPECT_EQ(listener.notifications, "modified ");
}

TEST_F(ObjectReactor, NullReactor_IsIgnored)
{
    const auto reader = open(xrecord);
    reader->addReactor(nullptr);
    reader->removeReactor(nullptr);
    EXPECT_EQ(ResourceCounters::now()[ResourceKind::objectReactor], 0);
}

} // namespace
} // namespace Tests
