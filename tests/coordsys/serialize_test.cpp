#include <algorithm>
#include <new>

#include "block_test.h"
#include "storage/unusual_definitions.h"
#include "storage/utf16le.h"

namespace Tests {
namespace {

using Embedded::FaultInjection;
using Embedded::ScopedFault;

constexpr std::size_t kLargestTextInBytes = 65536;

class Serialize : public BlockTest {
protected:
    const SystemHolder definition = catalogSystem(L"EPSG:25832");
    HostBlock bytes;
    int length = 4711;

    Qeapp::ErrorStatus serialize(const SystemHolder& system, QeDb::QeDbDwgVersion version)
    {
        return Cs::SerializeCoordinateSystem(system.get(), bytes.put(), length, version, &status);
    }
    Qeapp::ErrorStatus serialize(QeDb::QeDbDwgVersion version) { return serialize(definition, version); }
    Qeapp::ErrorStatus serializeWithFailing(const char* call, int code, QeDb::QeDbDwgVersion version)
    {
        const ScopedFault fault({.call = call, .code = code});
        const Qeapp::ErrorStatus result = serialize(version);
        EXPECT_GT(FaultInjection::failedCalls(), 0U) << call;
        return result;
    }
    Bytes block() const { return bytes ? Bytes(bytes.get(), bytes.get() + length) : Bytes(); }
    void expectNoBlock() const
    {
        EXPECT_EQ(bytes.get(), nullptr);
        EXPECT_EQ(length, -1);
    }

    /// The text of the system without its dependents, with its NUL.
    Bytes textForm() const { return Orvel::encodeUtf16le(serializedText(definition.get(), false)); }

    /// Makes a user-defined system whose text takes that many bytes with its NUL.
    static SystemHolder makeSystemWithTextLength(std::size_t lengthInBytes)
    {
        const std::size_t shortest = Orvel::encodeUtf16le(serializedText(makeSystemWithName(1).get(), false)).size();
        return makeSystemWithName(1 + (lengthInBytes - shortest) / 2);
    }
    static SystemHolder makeSystemWithName(std::size_t characters)
    {
        return UserSystem{.name = varied(characters)}.makeSystem();
    }
};

TEST_F(Serialize, EveryVersionBelow30_GivesThePackedDefinition)
{
    for (const int version : {-1, 0, 1, 21, 22, 28, 29}) {
        EXPECT_EQ(serialize(static_cast<QeDb::QeDbDwgVersion>(version)), Qeapp::eOk) << version;
        EXPECT_EQ(block(), packed(definition.get())) << version;
    }
}

TEST_F(Serialize, EveryVersionFrom30_GivesTheTextOfTheSystemWithItsNul)
{
    for (const int version : {30, 31, 33, 34, 1000}) {
        EXPECT_EQ(serialize(static_cast<QeDb::QeDbDwgVersion>(version)), Qeapp::eOk) << version;
        EXPECT_EQ(block(), textForm()) << version;
    }
}

// A musical clef is one character of Unicode and two units of UTF-16.
TEST_F(Serialize, Text_IsUtf16LittleEndian)
{
    ASSERT_EQ(serialize(userSystem(L"MINE:\u00e9\U0001D11E"), k30), Qeapp::eOk);
    const Bytes expected{'M', 0, 'I', 0, 'N', 0, 'E', 0, ':', 0, 0xe9, 0x00, 0x34, 0xd8, 0x1e, 0xdd, '"', 0};
    const Bytes text = block();
    EXPECT_NE(std::search(text.begin(), text.end(), expected.begin(), expected.end()), text.end());
}

TEST_F(Serialize, Block_IsAHostBuffer)
{
    const long before = Embedded::ResourceCounters::now()[Embedded::ResourceKind::hostBuffer];
    ASSERT_EQ(serialize(k29), Qeapp::eOk);
    EXPECT_EQ(Embedded::ResourceCounters::now()[Embedded::ResourceKind::hostBuffer], before + 1);
    qeutDelBuffer(bytes.put());
    EXPECT_EQ(Embedded::ResourceCounters::now()[Embedded::ResourceKind::hostBuffer], before);
}

TEST_F(Serialize, Success_ReportsStatusZero)
{
    for (const auto version : {k29, k30}) {
        status = kUntouched;
        ASSERT_EQ(serialize(version), Qeapp::eOk);
        EXPECT_EQ(status, 0) << version;
    }
}

TEST_F(Serialize, NullStatus_IsAllowed)
{
    for (const auto version : {k29, k30})
        EXPECT_EQ(Cs::SerializeCoordinateSystem(definition.get(), bytes.put(), length, version), Qeapp::eOk);
}

TEST_F(Serialize, Serializing_LeavesTheDefinitionUnchanged)
{
    const std::wstring before = serializedText(definition.get());
    ASSERT_EQ(serialize(k29), Qeapp::eOk);
    ASSERT_EQ(serialize(k30), Qeapp::eOk);
    EXPECT_EQ(serializedText(definition.get()), before);
}

TEST_F(Serialize, NullDefinition_ReturnsInvalidInputAndChangesNothing)
{
    unsigned char earlier = 0;
    for (const auto version : {k29, k30}) {
        unsigned char* pointer = &earlier;
        EXPECT_EQ(Cs::SerializeCoordinateSystem(nullptr, pointer, length, version, &status), Qeapp::eInvalidInput);
        EXPECT_EQ(pointer, &earlier);
        EXPECT_EQ(length, 4711);
        EXPECT_EQ(status, kUntouched);
    }
}

TEST_F(Serialize, EarlierBlock_IsNotFreed)
{
    HostBlock earlier;
    ASSERT_EQ(qeutNewBuffer(earlier.put(), 8), Qeapp::eOk);
    unsigned char* pointer = earlier.get();
    EXPECT_EQ(Cs::SerializeCoordinateSystem(definition.get(), pointer, length, k29), Qeapp::eOk);
    EXPECT_NE(pointer, earlier.get());
    bytes.reset(pointer);
}

TEST_F(Serialize, CallersPointer_IsNullAfterAFailure)
{
    unsigned char earlier = 0;
    unsigned char* pointer = &earlier;
    const ScopedFault fault({.call = "DefinitionStream::Write", .code = 42});
    EXPECT_EQ(Cs::SerializeCoordinateSystem(definition.get(), pointer, length, k29), Qeapp::eInvalidInput);
    EXPECT_EQ(pointer, nullptr);
    EXPECT_EQ(length, -1);
}

TEST_F(Serialize, TextOf65536Bytes_IsSerialized)
{
    ASSERT_EQ(serialize(makeSystemWithTextLength(kLargestTextInBytes), k30), Qeapp::eOk);
    EXPECT_EQ(length, 65536);
}

TEST_F(Serialize, TextOf65538Bytes_ReturnsInvalidInputAndLeavesTheStatus)
{
    EXPECT_EQ(serialize(makeSystemWithTextLength(kLargestTextInBytes + 2), k30), Qeapp::eInvalidInput);
    expectNoBlock();
    EXPECT_EQ(status, kUntouched);
}

TEST_F(Serialize, DefinitionTooLongForPacking_ReturnsInvalidInputAndStatus52)
{
    EXPECT_EQ(serialize(makeSystemWithName(1100), k29), Qeapp::eInvalidInput);
    expectNoBlock();
    EXPECT_EQ(status, 52);
}

TEST_F(Serialize, DefinitionTooLongForPacking_IsSerializedAsText)
{
    EXPECT_EQ(serialize(makeSystemWithName(1100), k30), Qeapp::eOk);
}

TEST_F(Serialize, LibraryFailureWhilePacking_ReturnsInvalidInputAndStatus52)
{
    for (const char* const call :
         {"CLSIDFromString", "DefinitionStream::CreateInstance", "DefinitionStream::Add", "DefinitionStream::Write"}) {
        status = kUntouched;
        EXPECT_EQ(serializeWithFailing(call, 57, k29), Qeapp::eInvalidInput) << call;
        expectNoBlock();
        EXPECT_EQ(status, 52) << call;
    }
}

TEST_F(Serialize, LibraryFailureWhileWritingText_ReturnsInvalidInputAndLeavesTheStatus)
{
    for (const int code : {10, 42, 52, 57}) {
        EXPECT_EQ(serializeWithFailing("DefinitionStream::Serialize_s", code, k30), Qeapp::eInvalidInput) << code;
        expectNoBlock();
        EXPECT_EQ(status, kUntouched) << code;
    }
}

TEST_F(Serialize, FailedHostBuffer_ReturnsTheHostResultAndStatus52)
{
    for (const auto version : {k29, k30}) {
        status = kUntouched;
        EXPECT_EQ(serializeWithFailing("qeutNewBuffer", 999, version), 999);
        expectNoBlock();
        EXPECT_EQ(status, 52) << version;
    }
}

TEST_F(Serialize, DefinitionThatCannotBeSerialized_AllocatesNoHostBuffer)
{
    EXPECT_EQ(serializeWithFailing("DefinitionStream::Write", 42, k29), Qeapp::eInvalidInput);
    EXPECT_EQ(countCalls("qeutNewBuffer"), 0U);
    EXPECT_EQ(serializeWithFailing("DefinitionStream::Serialize_s", 42, k30), Qeapp::eInvalidInput);
    EXPECT_EQ(countCalls("qeutNewBuffer"), 0U);
}

// An exception has no result and no library status.
TEST_F(Serialize, Exception_GivesNoBlockAndReportsStatusZero)
{
    const ScopedFault fault({.call = "DefinitionStream::Serialize_s", .throws = true});
    EXPECT_THROW(static_cast<void>(serialize(k30)), std::bad_alloc); // there is no result
    expectNoBlock();
    EXPECT_EQ(status, 0);
}

} // namespace
} // namespace Tests
