#include <climits>
#include <new>

#include "block_test.h"
#include "storage/utf16le.h"

namespace Tests {
namespace {

using Embedded::FaultInjection;
using Embedded::ScopedFault;

class Deserialize : public BlockTest {
protected:
    const SystemHolder system = catalogSystem(L"EPSG:25832");
    const Bytes packedBlock = packed(system.get());
    const Bytes textBlock = Orvel::encodeUtf16le(serializedText(system.get(), false));
    ArrayHolder definitions;

    Qeapp::ErrorStatus deserialize(const Bytes& block, int length)
    {
        const GuardedBlock guarded(block);
        return Cs::DeserializeCoordinateSystem(definitions.put(), guarded.get(), length, &status);
    }
    Qeapp::ErrorStatus deserialize(const Bytes& block) { return deserialize(block, static_cast<int>(block.size())); }

    /// Expects invalid input and an unchanged status.
    void expectUnreadable(const Bytes& block)
    {
        status = kUntouched;
        EXPECT_EQ(deserialize(block), Qeapp::eInvalidInput);
        EXPECT_FALSE(definitions);
        EXPECT_EQ(status, kUntouched);
    }
};

TEST_F(Deserialize, PackedBlock_GivesItsDefinition)
{
    EXPECT_EQ(deserialize(packedBlock), Qeapp::eOk);
    EXPECT_EQ(describe(definitions), Texts{L"system EPSG:25832"});
    EXPECT_EQ(serializedText(definitions->GetItem(0)), serializedText(system.get()));
}

TEST_F(Deserialize, TextBlock_GivesItsDefinition)
{
    EXPECT_EQ(deserialize(textBlock), Qeapp::eOk);
    EXPECT_EQ(describe(definitions), Texts{L"system EPSG:25832"});
    EXPECT_EQ(serializedText(definitions->GetItem(0)), serializedText(system.get()));
}

TEST_F(Deserialize, BlockOfEveryVersion_IsAccepted)
{
    for (int version = 21; version <= 33; ++version) {
        EXPECT_EQ(deserialize(serialized(system.get(), static_cast<QeDb::QeDbDwgVersion>(version))), Qeapp::eOk);
        EXPECT_EQ(describe(definitions), Texts{L"system EPSG:25832"}) << version;
    }
}

TEST_F(Deserialize, TextWithDatumAndEllipsoid_GivesAllThree)
{
    EXPECT_EQ(deserialize(Orvel::encodeUtf16le(serializedText(system.get(), true))), Qeapp::eOk);
    EXPECT_EQ(describe(definitions), (Texts{L"system EPSG:25832", L"datum EPSG:6258", L"ellipsoid EPSG:7019"}));
}

TEST_F(Deserialize, PackedDatumOrEllipsoid_GivesThatDefinition)
{
    EXPECT_EQ(deserialize(packed(catalogDatum(L"EPSG:6258").get())), Qeapp::eOk);
    EXPECT_EQ(describe(definitions), Texts{L"datum EPSG:6258"});
    EXPECT_EQ(deserialize(packed(catalogEllipsoid(L"EPSG:7019").get())), Qeapp::eOk);
    EXPECT_EQ(describe(definitions), Texts{L"ellipsoid EPSG:7019"});
}

TEST_F(Deserialize, UserDefinedSystem_NeedsNoCatalog)
{
    const SystemHolder own = userSystem(L"MINE:\u00e9\U0001D11E");
    for (const Bytes& block : {packed(own.get()), Orvel::encodeUtf16le(serializedText(own.get(), false))}) {
        EXPECT_EQ(deserialize(block), Qeapp::eOk);
        EXPECT_EQ(describe(definitions), Texts{L"system MINE:\u00e9\U0001D11E"});
    }
}

TEST_F(Deserialize, Success_ReportsStatusZero)
{
    for (const Bytes& block : {packedBlock, textBlock}) {
        status = kUntouched;
        ASSERT_EQ(deserialize(block), Qeapp::eOk);
        EXPECT_EQ(status, 0);
    }
}

TEST_F(Deserialize, NullStatus_IsAllowed)
{
    EXPECT_EQ(deserialized(packedBlock)->GetCount(), 1);
    EXPECT_EQ(deserialized(textBlock)->GetCount(), 1);
}

TEST_F(Deserialize, NullBytes_ReturnInvalidInputAndChangeNothing)
{
    FaultInjection::watch();
    EXPECT_EQ(Cs::DeserializeCoordinateSystem(definitions.put(), nullptr, 190, &status), Qeapp::eInvalidInput);
    EXPECT_EQ(FaultInjection::seen(), std::vector<std::string>()) << "no library call";
    EXPECT_EQ(status, kUntouched);
    EXPECT_FALSE(definitions);
}

TEST_F(Deserialize, LengthBelowOne_ReturnsInvalidInputAndChangesNothing)
{
    ASSERT_EQ(deserialize(packedBlock), Qeapp::eOk);
    auto* const earlier = definitions.get();
    status = kUntouched;
    for (const int length : {0, -1, INT_MIN}) {
        auto* pointer = earlier;
        EXPECT_EQ(Cs::DeserializeCoordinateSystem(pointer, textBlock.data(), length, &status), Qeapp::eInvalidInput);
        EXPECT_EQ(pointer, earlier) << length;
        EXPECT_EQ(status, kUntouched) << length;
    }
}

// The library reports a status, so the caller's status is unchanged. Otherwise it would be 52.
TEST_F(Deserialize, EmptyText_ReturnsInvalidInput)
{
    for (const Bytes& block : {Bytes{0}, Bytes{0, 0}, Bytes{0, 0, 'x'}, Bytes(64, 0)})
        expectUnreadable(block);
}

TEST_F(Deserialize, TextWithoutADefinition_ReturnsInvalidInput)
{
    for (const wchar_t* const text : {L"x", L"{", L"{}", L"EPSG:25832", L"\U0001D11E"})
        expectUnreadable(Orvel::encodeUtf16le(text));
}

TEST_F(Deserialize, TruncatedText_ReturnsInvalidInput)
{
    const std::wstring text = serializedText(system.get());
    expectUnreadable(Orvel::encodeUtf16le(text.substr(0, text.size() - 1)));
}

TEST_F(Deserialize, TextOfALaterFormat_ReturnsInvalidInput)
{
    std::wstring text = serializedText(system.get());
    const std::size_t version = text.find(L"\"spatialReference\":1");
    ASSERT_NE(version, std::wstring::npos);
    expectUnreadable(Orvel::encodeUtf16le(text.replace(version, 20, L"\"spatialReference\":9")));
}

TEST_F(Deserialize, Text_IsReadToItsNulForAnyLength)
{
    for (const int length : {1, 2, 3, static_cast<int>(textBlock.size()) - 1, static_cast<int>(textBlock.size())}) {
        EXPECT_EQ(deserialize(textBlock, length), Qeapp::eOk) << length;
        EXPECT_EQ(describe(definitions), Texts{L"system EPSG:25832"}) << length;
    }
}

TEST_F(Deserialize, BytesAfterTheNulOfAText_AreNotRead)
{
    Bytes block = textBlock;
    block.insert(block.end(), {0xff, 0xff, 0x80, 'x'});
    EXPECT_EQ(deserialize(block), Qeapp::eOk);
    EXPECT_EQ(describe(definitions), Texts{L"system EPSG:25832"});
}

TEST_F(Deserialize, PackedBlockWithAShorterLength_ReturnsInvalidInput)
{
    EXPECT_EQ(deserialize(packedBlock, static_cast<int>(packedBlock.size()) - 1), Qeapp::eInvalidInput);
    EXPECT_EQ(deserialize(packedBlock, 1), Qeapp::eInvalidInput);
    EXPECT_EQ(status, kUntouched);
}

TEST_F(Deserialize, PackedBlockWithMoreBytesAfterIt_ReturnsInvalidInput)
{
    Bytes block = packedBlock;
    block.insert(block.end(), {0x01, 0x00});
    expectUnreadable(block);
}

TEST_F(Deserialize, PackedBlockOfAnUnknownKind_ReturnsInvalidInput)
{
    Bytes block = packedBlock;
    ASSERT_EQ(block[0], 16) << "the class identifier's literal";
    block[1] ^= 1U;
    expectUnreadable(block);
}

TEST_F(Deserialize, EarlierArray_IsNotDestroyed)
{
    const ArrayHolder earlier = deserialized(textBlock);
    auto* pointer = earlier.get();
    EXPECT_EQ(Cs::DeserializeCoordinateSystem(pointer, packedBlock.data(), static_cast<int>(packedBlock.size())),
              Qeapp::eOk);
    EXPECT_NE(pointer, earlier.get());
    definitions.reset(pointer);
    EXPECT_EQ(earlier->GetCount(), 1);
}

TEST_F(Deserialize, EarlierArray_IsUnchangedAfterAFailure)
{
    const ArrayHolder earlier = deserialized(textBlock);
    auto* pointer = earlier.get();
    const Bytes zeros(4, 0);
    EXPECT_EQ(Cs::DeserializeCoordinateSystem(pointer, zeros.data(), 4), Qeapp::eInvalidInput);
    EXPECT_EQ(pointer, earlier.get());
}

TEST_F(Deserialize, ArrayThatCannotBeCreated_ReturnsInvalidInput)
{
    for (const Bytes& block : {packedBlock, textBlock}) {
        for (const int code : {52, 57}) {
            const ScopedFault fault({.call = "DefinitionBaseArray::CreateInstance", .code = code});
            expectUnreadable(block);
            EXPECT_EQ(FaultInjection::failedCalls(), 1U);
        }
    }
}

TEST_F(Deserialize, PackedDefinitionThatCannotBeAdded_ReturnsInvalidInput)
{
    FaultInjection::watch();
    ASSERT_EQ(deserialize(packedBlock), Qeapp::eOk);
    const std::size_t last = countCalls("DefinitionBaseArray::Add"); // the library makes the earlier ones itself
    const ScopedFault fault({.call = "DefinitionBaseArray::Add", .occurrence = last, .code = 57});
    expectUnreadable(packedBlock);
    EXPECT_EQ(countCalls("DefinitionStream::Deserialize_s"), 0U) << "it is not read as text";
}

TEST_F(Deserialize, LibraryFailureWhileReadingText_ReturnsInvalidInput)
{
    for (const int code : {43, 44, 57}) {
        const ScopedFault fault({.call = "DefinitionStream::Deserialize_s", .code = code});
        expectUnreadable(textBlock);
        EXPECT_EQ(FaultInjection::failedCalls(), 1U);
    }
}

TEST_F(Deserialize, CallThatSucceedsWithoutAnArray_ReturnsInvalidInput)
{
    for (const char* const call : {"DefinitionBaseArray::CreateInstance", "DefinitionStream::Deserialize_s"}) {
        const ScopedFault fault({.call = call, .code = 0});
        status = kUntouched;
        EXPECT_EQ(deserialize(textBlock), Qeapp::eInvalidInput) << call;
        EXPECT_FALSE(definitions) << call;
        EXPECT_EQ(status, 52) << call;
    }
}

TEST_F(Deserialize, PackedBlockThatCannotBeDecoded_IsReadAsText)
{
    const ScopedFault fault({.call = "DefinitionStream::Read", .code = 43});
    expectUnreadable(packedBlock);
    EXPECT_EQ(countCalls("DefinitionStream::Deserialize_s"), 1U);
}

// An exception has no result and no library status.
TEST_F(Deserialize, Exception_GivesNoArrayAndReportsStatusZero)
{
    for (const char* const call : {"DefinitionBaseArray::CreateInstance", "DefinitionStream::Deserialize_s"}) {
        status = kUntouched;
        const ScopedFault fault({.call = call, .throws = true});
        EXPECT_THROW(static_cast<void>(deserialize(textBlock)), std::bad_alloc) << call; // there is no result
        EXPECT_FALSE(definitions) << call;
        EXPECT_EQ(status, 0) << call;
    }
}

TEST_F(Deserialize, EveryFailingCallOfAPackedBlock_GivesNoArray)
{
    FaultInjection::watch();
    ASSERT_EQ(deserialize(packedBlock), Qeapp::eOk);
    const std::size_t calls = FaultInjection::seen().size();
    for (std::size_t number = 1; number <= calls; ++number) {
        const ScopedFault fault({.call = "", .occurrence = number, .code = {}});
        expectUnreadable(packedBlock);
        EXPECT_EQ(FaultInjection::failedCalls(), 1U);
    }
}

// The attempt to unpack the block may fail before it is read as text.
TEST_F(Deserialize, EveryFailingCallOfATextBlock_ReturnsInvalidInputOrIsIgnored)
{
    FaultInjection::watch();
    ASSERT_EQ(deserialize(textBlock), Qeapp::eOk);
    const std::vector<std::string> calls = FaultInjection::seen();
    for (std::size_t number = 1; number <= calls.size(); ++number) {
        const std::string& call = calls[number - 1];
        const bool mayFail = call == "StringFromCLSID";
        const ScopedFault fault({.call = "", .occurrence = number, .code = {}});
        EXPECT_EQ(deserialize(textBlock), mayFail ? Qeapp::eOk : Qeapp::eInvalidInput) << call;
        EXPECT_EQ(definitions.get() != nullptr, mayFail) << call;
    }
}

} // namespace
} // namespace Tests
