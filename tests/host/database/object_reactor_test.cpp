#include "embedded/diagnostics/resource_counters.h"
#include "host/database/drawing_test.h"

namespace Tests {
namespace {

using Embedded::ResourceCounters;
using Embedded::ResourceKind;

/// Writes down what it hears.
class Listener final : public QeDbObjectReactor {
public:
    void modified(const QeDbObject* object) override
    {
        heard += "modified ";
        readable = object->isReadEnabled();
        if (leave != nullptr)
            leave->removeReactor(this);
    }
    void erased(const QeDbObject* /*object*/, bool erasing) override { heard += erasing ? "erased " : "unerased "; }

    std::string heard;
    bool readable = false;
    QeDbObject* leave = nullptr;
};

class ObjectReactor : public DrawingTest {
protected:
    void listenTo(QeDbObjectId id) { open(id)->addReactor(&listener); }

    Listener listener;
    QeDbObjectId xrecord = addXrecord(L"key");
};

TEST_F(ObjectReactor, Write_IsHeardAtClose)
{
    listenTo(xrecord);
    auto writer = open<QeDbXrecord>(xrecord, QeDb::kForWrite);
    EXPECT_EQ(writer->setFromRbChain(nullptr), Qeapp::eOk);
    EXPECT_EQ(listener.heard, "");
    writer.close();
    EXPECT_EQ(listener.heard, "modified ");
    EXPECT_TRUE(listener.readable);
}

TEST_F(ObjectReactor, ReactorThatTakesNoNotice_IsInNobodysWay)
{
    class Indifferent final : public QeDbObjectReactor {};
    Indifferent indifferent;
    open(xrecord)->addReactor(&indifferent);
    listenTo(xrecord);
    writeText(xrecord, L"other");
    EXPECT_EQ(open(xrecord, QeDb::kForWrite)->erase(), Qeapp::eOk);
    EXPECT_EQ(listener.heard, "modified erased modified "); // the last at close
}

TEST_F(ObjectReactor, CloseWithoutWrite_IsNotHeard)
{
    listenTo(xrecord);
    open(xrecord, QeDb::kForWrite).close();
    EXPECT_EQ(listener.heard, "");
}

TEST_F(ObjectReactor, EraseAndUnerase_AreHeard)
{
    listenTo(xrecord);
    const auto writer = open(xrecord, QeDb::kForWrite);
    EXPECT_EQ(writer->erase(), Qeapp::eOk);
    EXPECT_EQ(writer->erase(false), Qeapp::eOk);
    EXPECT_EQ(listener.heard, "erased unerased ");
}

TEST_F(ObjectReactor, ReplacedEntry_IsHeardErased)
{
    listenTo(xrecord);
    addXrecord(L"key");
    EXPECT_EQ(listener.heard, "erased ");
}

TEST_F(ObjectReactor, Undo_IsNotHeard)
{
    listenTo(xrecord);
    begin();
    writeText(xrecord, L"other");
    listener.heard.clear();
    abort();
    EXPECT_EQ(listener.heard, "");
}

TEST_F(ObjectReactor, AddedTwice_HearsOnceAndIsCountedOnce)
{
    const long before = ResourceCounters::now()[ResourceKind::objectReactor];
    listenTo(xrecord);
    listenTo(xrecord);
    EXPECT_EQ(ResourceCounters::now()[ResourceKind::objectReactor], before + 1);
    erase(xrecord);
    EXPECT_EQ(listener.heard, "erased modified ");
}

TEST_F(ObjectReactor, RemovedReactor_HearsNothing)
{
    listenTo(xrecord);
    open(xrecord)->removeReactor(&listener);
    writeText(xrecord, L"other");
    EXPECT_EQ(listener.heard, "");
}

TEST_F(ObjectReactor, ReactorMayLeaveWhileItHears)
{
    listenTo(xrecord);
    listener.leave = open(xrecord).get();
    writeText(xrecord, L"one");
    writeText(xrecord, L"two");
    EXPECT_EQ(listener.heard, "modified ");
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
