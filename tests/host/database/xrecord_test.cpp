#include <array>
#include <limits>

#include "host/database/drawing_test.h"

namespace Tests {
namespace {

class Xrecord : public DrawingTest {};

TEST_F(Xrecord, NewRecord_IsEmpty)
{
    const QeDbXrecord record;
    ResbufChain chain;
    EXPECT_EQ(record.rbChain(chain.put()), Qeapp::eOk);
    EXPECT_EQ(chain.get(), nullptr);
}

TEST_F(Xrecord, Chain_IsReturnedComplete)
{
    std::array<char, 3> bytes = {'\x0a', '\x0b', '\x0c'};
    const QeBinaryChunk chunk{3, bytes.data()};
    const ResbufChain chain(qeutBuildList(1071, 1, 1002, L"{", 310, &chunk, 1002, L"}", 300, L"", QeRb::kListEnd));
    QeDbXrecord record;
    ASSERT_EQ(record.setFromRbChain(chain.get()), Qeapp::eOk);
    ResbufChain back;
    ASSERT_EQ(record.rbChain(back.put()), Qeapp::eOk);
    EXPECT_EQ(textOf(back.get()), "1071:1 1002:{ 310:0a0b0c 1002:} 300:");
    EXPECT_NE(back.get(), chain.get());
}

TEST_F(Xrecord, LongestChunk_IsReturnedComplete)
{
    std::string bytes(static_cast<std::size_t>(std::numeric_limits<short>::max()), '\x5a');
    const QeBinaryChunk chunk{std::numeric_limits<short>::max(), bytes.data()};
    const ResbufChain chain(qeutBuildList(310, &chunk, QeRb::kListEnd));
    QeDbXrecord record;
    ASSERT_EQ(record.setFromRbChain(chain.get()), Qeapp::eOk);
    ResbufChain back;
    ASSERT_EQ(record.rbChain(back.put()), Qeapp::eOk);
    ASSERT_EQ(back.get()->resval.rbinary.clen, std::numeric_limits<short>::max());
    EXPECT_EQ(std::string(back.get()->resval.rbinary.buf, bytes.size()), bytes);
}

TEST_F(Xrecord, NullText_IsStoredAsEmptyText)
{
    const ResbufChain chain(qeutNewRb(300));
    QeDbXrecord record;
    ASSERT_EQ(record.setFromRbChain(chain.get()), Qeapp::eOk);
    ResbufChain back;
    ASSERT_EQ(record.rbChain(back.put()), Qeapp::eOk);
    EXPECT_STREQ(back.get()->resval.rstring, L"");
}

TEST_F(Xrecord, NullChain_ClearsTheRecord)
{
    const QeDbObjectId id = addXrecord(L"key");
    EXPECT_EQ(open<QeDbXrecord>(id, QeDb::kForWrite)->setFromRbChain(nullptr, &database), Qeapp::eOk);
    EXPECT_EQ(contentsOf(id), "");
}

TEST_F(Xrecord, UnknownGroupCode_IsRefusedAndNothingChanges)
{
    const QeDbObjectId id = addXrecord(L"key");
    const auto record = open<QeDbXrecord>(id, QeDb::kForWrite);
    resbuf foreign{};
    foreign.restype = 90;
    EXPECT_EQ(record->setFromRbChain(&foreign), Qeapp::eInvalidResbuf);
    ResbufChain chain;
    EXPECT_EQ(record->rbChain(chain.put()), Qeapp::eOk);
    EXPECT_EQ(textOf(chain.get()), "300:text");
}

TEST_F(Xrecord, ChunkWithoutItsBytes_IsRefused)
{
    QeDbXrecord record;
    for (const short length : {short{-1}, short{1}}) {
        resbuf item{};
        item.restype = QeRb::kBinaryChunk;
        item.resval.rbinary = {length, nullptr};
        EXPECT_EQ(record.setFromRbChain(&item), Qeapp::eInvalidResbuf) << length;
    }
}

TEST_F(Xrecord, AnotherDatabase_IsRefused)
{
    const QeDbObjectId id = addXrecord(L"key");
    QeDbDatabase other;
    ResbufChain chain;
    const auto record = open<QeDbXrecord>(id, QeDb::kForWrite);
    EXPECT_EQ(record->setFromRbChain(nullptr, &other), Qeapp::eWrongDatabase);
    EXPECT_EQ(record->rbChain(chain.put(), &other), Qeapp::eWrongDatabase);
    EXPECT_EQ(record->rbChain(chain.put(), &database), Qeapp::eOk);
}

TEST_F(Xrecord, ClosedRecord_ReturnsNothing)
{
    auto record = open<QeDbXrecord>(addXrecord(L"key"));
    QeDbXrecord* closed = record.get();
    record.close();
    ResbufChain chain;
    EXPECT_EQ(closed->rbChain(chain.put()), Qeapp::eNotOpenForRead);
    EXPECT_EQ(chain.get(), nullptr);
}

TEST_F(Xrecord, Iterator_ReturnsTheGroupCodesInOrder)
{
    const ResbufChain chain(qeutBuildList(1071, 1, 300, L"x", QeRb::kListEnd));
    QeDbXrecord record;
    ASSERT_EQ(record.setFromRbChain(chain.get()), Qeapp::eOk);
    QeDbXrecordIterator iterator(&record);
    EXPECT_EQ(iterator.curResType(), 1071);
    EXPECT_TRUE(iterator.next());
    EXPECT_EQ(iterator.curResType(), 300);
    EXPECT_FALSE(iterator.next());
    EXPECT_TRUE(iterator.done());
    EXPECT_FALSE(iterator.next());
    EXPECT_EQ(iterator.curResType(), -1);
}

TEST_F(Xrecord, IteratorOverAnEmptyRecord_IsDone)
{
    const QeDbXrecord record;
    EXPECT_TRUE(QeDbXrecordIterator(&record).done());
    EXPECT_TRUE(QeDbXrecordIterator(nullptr).done());
    EXPECT_EQ(QeDbXrecordIterator(&record).curResType(), -1);
}

} // namespace
} // namespace Tests
