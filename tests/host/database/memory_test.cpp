#include <algorithm>
#include <new>

#include "embedded/diagnostics/fault_injection.h"
#include "embedded/diagnostics/resource_counters.h"
#include "host/database/drawing_test.h"

namespace Tests {
namespace {

using Embedded::ResourceCounters;
using Embedded::ResourceKind;
using Embedded::ScopedFault;

class Memory : public PlatformTest {};

TEST_F(Memory, NewString_IsACopy)
{
    const wchar_t source[] = L"caf\u00e9";
    wchar_t* copy = nullptr;
    ASSERT_EQ(qeutNewString(source, copy), Qeapp::eOk);
    EXPECT_NE(copy, source);
    EXPECT_STREQ(copy, source);
    EXPECT_EQ(ResourceCounters::now()[ResourceKind::hostBuffer], 1);
    qeutDelBuffer(copy);
    EXPECT_EQ(copy, nullptr);
    EXPECT_EQ(ResourceCounters::now()[ResourceKind::hostBuffer], 0);
}

TEST_F(Memory, NullString_IsRefused)
{
    wchar_t unused = L'x';
    wchar_t* copy = &unused;
    EXPECT_EQ(qeutNewString(nullptr, copy), Qeapp::eInvalidInput);
    EXPECT_EQ(copy, nullptr);
}

TEST_F(Memory, NewBuffer_IsZero)
{
    unsigned char* buffer = nullptr;
    ASSERT_EQ(qeutNewBuffer(buffer, 1000), Qeapp::eOk);
    EXPECT_TRUE(std::all_of(buffer, buffer + 1000, [](unsigned char byte) { return byte == 0; }));
    qeutDelBuffer(buffer);
    EXPECT_EQ(buffer, nullptr);
}

TEST_F(Memory, BufferOfZeroBytes_IsRefused)
{
    unsigned char* buffer = nullptr;
    EXPECT_EQ(qeutNewBuffer(buffer, 0), Qeapp::eInvalidInput);
    EXPECT_EQ(buffer, nullptr);
}

TEST_F(Memory, ReleaseOfNull_IsAllowed)
{
    wchar_t* text = nullptr;
    unsigned char* buffer = nullptr;
    qeutDelBuffer(text);
    qeutDelBuffer(buffer);
    qeapp_free(nullptr);
    qeHeapFree(nullptr);
    EXPECT_EQ(ResourceCounters::now()[ResourceKind::hostBuffer], 0);
    EXPECT_EQ(ResourceCounters::now()[ResourceKind::resbufMemory], 0);
}

TEST_F(Memory, ResbufMemory_IsCounted)
{
    void* memory = qeapp_malloc(16);
    EXPECT_EQ(ResourceCounters::now()[ResourceKind::resbufMemory], 1);
    qeapp_free(memory);
}

TEST_F(Memory, HostHeap_IsZeroFilled)
{
    auto* bytes = static_cast<unsigned char*>(qeHeapAlloc(256));
    ASSERT_NE(bytes, nullptr);
    EXPECT_TRUE(std::all_of(bytes, bytes + 256, [](unsigned char byte) { return byte == 0; }));
    qeHeapFree(bytes);
}

TEST_F(Memory, FullHostHeap_ThrowsFromNew)
{
    const ScopedFault fault({.call = "qeHeapAlloc", .code = {}});
    EXPECT_THROW(static_cast<void>(std::make_unique<QeDbXrecord>()), std::bad_alloc);
}

TEST_F(Memory, FullHostHeap_ReturnsNullFromNothrowNew)
{
    const ScopedFault fault({.call = "qeHeapAlloc", .code = {}});
    const std::unique_ptr<QeDbXrecord> object(new (std::nothrow) QeDbXrecord);
    EXPECT_EQ(object, nullptr);
    EXPECT_EQ(ResourceCounters::now()[ResourceKind::detachedObject], 0) << "the constructor must not have run";
}

TEST_F(Memory, DetachedObject_IsCounted)
{
    const std::unique_ptr<QeDbXrecord> object(new (std::nothrow) QeDbXrecord);
    EXPECT_NE(object, nullptr);
    EXPECT_EQ(ResourceCounters::now()[ResourceKind::detachedObject], 1);
}

TEST_F(Memory, FailingAllocators_ReturnNull)
{
    wchar_t* text = nullptr;
    unsigned char* buffer = nullptr;
    const ScopedFault fault({.call = "", .fromThenOn = true, .code = {}});
    EXPECT_EQ(qeutNewString(L"x", text), Qeapp::eOutOfMemory);
    EXPECT_EQ(qeutNewBuffer(buffer, 1), Qeapp::eOutOfMemory);
    EXPECT_EQ(qeapp_malloc(1), nullptr);
    EXPECT_EQ(qeHeapAlloc(1), nullptr);
    EXPECT_EQ(text, nullptr);
    EXPECT_EQ(buffer, nullptr);
}

} // namespace
} // namespace Tests
