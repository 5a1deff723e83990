#include <array>

#include "embedded/diagnostics/fault_injection.h"
#include "embedded/diagnostics/resource_counters.h"
#include "host/database/drawing_test.h"

namespace Tests {
namespace {

class Resbuf : public PlatformTest {};

TEST_F(Resbuf, GroupCode_DeterminesTheKindOfValue)
{
    using QeRb::ValueKind;
    const std::array<std::pair<int, ValueKind>, 19> cases = {{
        {300, ValueKind::string},
        {309, ValueKind::string},
        {310, ValueKind::binary},
        {319, ValueKind::binary},
        {320, ValueKind::none},
        {299, ValueKind::none},
        {1000, ValueKind::string},
        {1001, ValueKind::string},
        {1002, ValueKind::string},
        {1003, ValueKind::none},
        {1004, ValueKind::binary},
        {1005, ValueKind::none},
        {1040, ValueKind::real},
        {1070, ValueKind::integer16},
        {1071, ValueKind::integer32},
        {1072, ValueKind::none},
        {QeRb::kListEnd, ValueKind::none},
        {0, ValueKind::none},
        {-1, ValueKind::none},
    }};
    for (const auto& [code, kind] : cases)
        EXPECT_EQ(qeutValueKind(code), kind) << code;
}

TEST_F(Resbuf, NewResbuf_IsZero)
{
    for (const int code : {300, 310, 1040, 1070, 1071}) {
        const ResbufChain item(qeutNewRb(code));
        ASSERT_NE(item.get(), nullptr);
        EXPECT_EQ(item.get()->restype, code);
        EXPECT_EQ(item.get()->rbnext, nullptr);
        const resbuf::Value zero{};
        EXPECT_EQ(item.get()->resval.rreal, zero.rreal);
        if (code == 310) {
            EXPECT_EQ(item.get()->resval.rbinary.clen, 0);
            EXPECT_EQ(item.get()->resval.rbinary.buf, nullptr);
        }
    }
}

TEST_F(Resbuf, UnknownGroupCode_ReturnsNull)
{
    EXPECT_EQ(qeutNewRb(1), nullptr);
    EXPECT_EQ(qeutNewRb(QeRb::kListEnd), nullptr);
    EXPECT_EQ(qeutNewRb(65536 + 300), nullptr);
}

TEST_F(Resbuf, BuiltList_HoldsCopiesOfItsArguments)
{
    std::array<char, 3> bytes = {'\x00', '\x7f', '\xff'};
    const QeBinaryChunk chunk{3, bytes.data()};
    wchar_t text[] = L"text";
    const ResbufChain list(qeutBuildList(300, text, 310, &chunk, 1040, 2.5, 1070, -3, 1071, 70000, QeRb::kListEnd));
    bytes.fill('\x11');
    text[0] = L'X';
    EXPECT_EQ(textOf(list.get()), "300:text 310:007fff 1040:2.5 1070:-3 1071:70000");
}

TEST_F(Resbuf, EmptyList_IsNull)
{
    EXPECT_EQ(qeutBuildList(QeRb::kListEnd), nullptr);
}

TEST_F(Resbuf, InvalidArguments_GiveNoList)
{
    EXPECT_EQ(qeutBuildList(300, L"text", 42, 1, QeRb::kListEnd), nullptr);
    EXPECT_EQ(qeutBuildList(1071, 1, 300, static_cast<const wchar_t*>(nullptr), QeRb::kListEnd), nullptr);
    EXPECT_EQ(qeutBuildList(310, static_cast<const QeBinaryChunk*>(nullptr), QeRb::kListEnd), nullptr);
    EXPECT_EQ(qeutBuildList(1070, 32768, QeRb::kListEnd), nullptr);
}

TEST_F(Resbuf, FailingAllocationOfAList_LeaksNothing)
{
    for (const char* call : {"qeutNewRb", "qeapp_malloc"}) {
        for (std::size_t occurrence = 1; occurrence <= 2; ++occurrence) {
            const Embedded::ScopedFault fault({.call = call, .occurrence = occurrence, .code = {}});
            EXPECT_EQ(qeutBuildList(300, L"one", 300, L"two", QeRb::kListEnd), nullptr) << call << occurrence;
            EXPECT_EQ(Embedded::FaultInjection::failedCalls(), 1U);
        }
    }
}

TEST_F(Resbuf, Copy_EqualsTheOriginal)
{
    std::array<char, 2> bytes = {'\x01', '\x02'};
    const QeBinaryChunk chunk{2, bytes.data()};
    const QeBinaryChunk empty{0, nullptr};
    const ResbufChain list(qeutBuildList(1002, L"{", 310, &chunk, 310, &empty, 1002, L"}", QeRb::kListEnd));
    const ResbufChain copy(qeutCopyRb(list.get()));
    EXPECT_EQ(textOf(copy.get()), "1002:{ 310:0102 310: 1002:}");
    EXPECT_NE(copy.get(), list.get());
}

TEST_F(Resbuf, CopyOfNull_IsNull)
{
    EXPECT_EQ(qeutCopyRb(nullptr), nullptr);
}

TEST_F(Resbuf, Chain_ReleasesMemoryThatItsCreatorAllocated)
{
    resbuf* item = qeutNewRb(QeRb::kBinaryChunk);
    ASSERT_NE(item, nullptr);
    item->resval.rbinary.buf = static_cast<char*>(qeapp_malloc(4));
    item->resval.rbinary.clen = 4;
    qeutRelRb(item); // the fixture finds memory that is not released
}

TEST_F(Resbuf, LongChain_IsReleasedWithoutRecursion)
{
    resbuf* first = nullptr;
    for (int index = 0; index < 300000; ++index) {
        resbuf* item = qeutNewRb(QeRb::kXdataInteger32);
        item->rbnext = first;
        first = item;
    }
    qeutRelRb(first);
}

} // namespace
} // namespace Tests
