#include <climits>
#include <new>

#include "block_test.h"
#include "storage/packed_definition.h"
#include "storage/utf16le.h"

namespace Tests {
namespace {

using Embedded::FaultInjection;
using Embedded::ScopedFault;

Bytes packed(const Library::DefinitionBase* definition)
{
    Bytes form;
    EXPECT_TRUE(Orvel::EncodeDefinitionBytes(definition, form));
    return form;
}

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

    /// Expects invalid input, and that the library status is not reported.
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

TEST_F(Deserialize, TextWithDatumAndEllipsoid_GivesThemToo)
{
    EXPECT_EQ(deserialize(Orvel::encodeUtf16le(serializedText(system.get(), true))), Qeapp::eOk);
    EXPECT_EQ(describe(definitions), (Texts{L"system EPSG:25832", L"datum EPSG:6258", L"ellipsoid EPSG:7019"}));
}

TEST_F(Deserialize, PackedDatumOrEllipsoid_IsGivenAsItIs)
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

TEST_F(Deserialize, NeedsNoStatus)
{
    EXPECT_EQ(deserialized(packedBlock)->GetCount(), 1);
    EXPECT_EQ(deserialized(textBlock)->GetCount(), 1);
}

TEST_F(Deserialize, NullBytes_AreInvalidInputAndTouchNothing)
{
    FaultInjection::watch();
    EXPECT_EQ(Cs::DeserializeCoordinateSystem(definitions.put(), nullptr, 190, &status), Qeapp::eInvalidInput);
    EXPECT_EQ(FaultInjection::seen(), std::vector<std::string>()) << "the library is not asked at all";
    EXPECT_EQ(status, kUntouched);
    EXPECT_FALSE(definitions);
}

TEST_F(Deserialize, LengthBelowOne_IsInvalidInputAndTouchesNothing)
{
    ASSERT_EQ(deserialize(packedBlock), Qeapp::eOk);
    auto* const former = definitions.get();
    status = kUntouched;
    for (const int length : {0, -1, INT_MIN}) {
        auto* pointer = former;
        EXPECT_EQ(Cs::DeserializeCoordinateSystem(pointer, textBlock.data(), length, &status), Qeapp::eInvalidInput);
        EXPECT_EQ(pointer, former) << length;
        EXPECT_EQ(status, kUntouched) << length;
    }
}

// A library status was recorded, so the caller's is unchanged. Otherwise it would be 52.
TEST_F(Deserialize, TwoZerosAtTheBeginning_AreAnEmptyTextAndInvalidInput)
{
    for (const Bytes& block : {Bytes{0}, Bytes{0, 0}, Bytes{0, 0, 'x'}, Bytes(64, 0)})
        expectUnreadable(block);
}

TEST_F(Deserialize, TextThatIsNoDefinition_IsInvalidInput)
{
    for (const wchar_t* const text : {L"x", L"{", L"{}", L"EPSG:25832", L"\U0001D11E"})
        expectUnreadable(Orvel::encodeUtf16le(text));
}

TEST_F(Deserialize, TextThatEndsEarly_IsInvalidInput)
{
    const std::wstring text = serializedText(system.get());
    expectUnreadable(Orvel::encodeUtf16le(text.substr(0, text.size() - 1)));
}

TEST_F(Deserialize, TextOfAFormatToCome_IsInvalidInput)
{
    std::wstring text = serializedText(system.get());
    const std::size_t version = text.find(L"\"spatialReference\":1");
    ASSERT_NE(version, std::wstring::npos);
    expectUnreadable(Orvel::encodeUtf16le(text.replace(version, 20, L"\"spatialReference\":9")));
}

TEST_F(Deserialize, TextEndsWithItsNulWhateverTheLength)
{
    for (const int length : {1, 2, 3, static_cast<int>(textBlock.size()) - 1, static_cast<int>(textBlock.size())}) {
        EXPECT_EQ(deserialize(textBlock, length), Qeapp::eOk) << length;
        EXPECT_EQ(describe(definitions), Texts{L"system EPSG:25832"}) << length;
    }
}

TEST_F(Deserialize, BytesBehindTheNulOfAText_AreNotRead)
{
    Bytes block = textBlock;
    block.insert(block.end(), {0xff, 0xff, 0x80, 'x'});
    EXPECT_EQ(deserialize(block), Qeapp::eOk);
    EXPECT_EQ(describe(definitions), Texts{L"system EPSG:25832"});
}

TEST_F(Deserialize, PackedBlockWithAShorterLength_IsInvalidInput)
{
    EXPECT_EQ(deserialize(packedBlock, static_cast<int>(packedBlock.size()) - 1), Qeapp::eInvalidInput);
    EXPECT_EQ(deserialize(packedBlock, 1), Qeapp::eInvalidInput);
    EXPECT_EQ(status, kUntouched);
}

TEST_F(Deserialize, PackedBlockWithBytesBehindIt_IsInvalidInput)
{
    Bytes block = packedBlock;
    block.insert(block.end(), {0x01, 0x00});
    expectUnreadable(block);
}

TEST_F(Deserialize, PackedBlockOfAnUnknownKind_IsInvalidInput)
{
    Bytes block = packedBlock;
    ASSERT_EQ(block[0], 16) << "the class identifier's literal";
    block[1] ^= 1U;
    expectUnreadable(block);
}

TEST_F(Deserialize, FormerArray_IsForgottenNotDestroyed)
{
    const ArrayHolder former = deserialized(textBlock);
    auto* pointer = former.get();
    EXPECT_EQ(Cs::DeserializeCoordinateSystem(pointer, packedBlock.data(), static_cast<int>(packedBlock.size())),
              Qeapp::eOk);
    EXPECT_NE(pointer, former.get());
    definitions.reset(pointer);
    EXPECT_EQ(former->GetCount(), 1);
}

TEST_F(Deserialize, FormerArray_StaysAfterAFailure)
{
    const ArrayHolder former = deserialized(textBlock);
    auto* pointer = former.get();
    const Bytes zeros(4, 0);
    EXPECT_EQ(Cs::DeserializeCoordinateSystem(pointer, zeros.data(), 4), Qeapp::eInvalidInput);
    EXPECT_EQ(pointer, former.get());
}

TEST_F(Deserialize, ArrayThatCannotBeMade_IsInvalidInputWhateverTheStatus)
{
    for (const Bytes& block : {packedBlock, textBlock}) {
        for (const int code : {52, 57}) {
            const ScopedFault fault({.call = "DefinitionBaseArray::CreateInstance", .code = code});
            expectUnreadable(block);
            EXPECT_EQ(FaultInjection::failedCalls(), 1U);
        }
    }
}

TEST_F(Deserialize, PackedDefinitionThatCannotBeAdded_IsInvalidInput)
{
    FaultInjection::watch();
    ASSERT_EQ(deserialize(packedBlock), Qeapp::eOk);
    const std::size_t last = countCalls("DefinitionBaseArray::Add"); // the ones before are the library's own
    const ScopedFault fault({.call = "DefinitionBaseArray::Add", .occurrence = last, .code = 57});
    expectUnreadable(packedBlock);
    EXPECT_EQ(countCalls("DefinitionStream::Deserialize_s"), 0U) << "it is not taken for a text";
}

TEST_F(Deserialize, FailingLibraryWhileReadingText_IsInvalidInput)
{
    for (const int code : {43, 44, 57}) {
        const ScopedFault fault({.call = "DefinitionStream::Deserialize_s", .code = code});
        expectUnreadable(textBlock);
        EXPECT_EQ(FaultInjection::failedCalls(), 1U);
    }
}

TEST_F(Deserialize, ArrayThatIsNotThereDespiteSuccess_IsInvalidInput)
{
    for (const char* const call : {"DefinitionBaseArray::CreateInstance", "DefinitionStream::Deserialize_s"}) {
        const ScopedFault fault({.call = call, .code = 0});
        status = kUntouched;
        EXPECT_EQ(deserialize(textBlock), Qeapp::eInvalidInput) << call;
        EXPECT_FALSE(definitions) << call;
        EXPECT_EQ(status, 52) << call;
    }
}

TEST_F(Deserialize, PackedBlockThatCannotBeDecoded_IsTriedAsText)
{
    const ScopedFault fault({.call = "DefinitionStream::Read", .code = 43});
    expectUnreadable(packedBlock);
    EXPECT_EQ(countCalls("DefinitionStream::Deserialize_s"), 1U);
}

// An exception has no result and no library status.
TEST_F(Deserialize, ExceptionOnTheWay_GivesNoArrayAndReportsStatusZero)
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
TEST_F(Deserialize, EveryFailingCallOfATextBlock_IsInvalidInputOrNoMatter)
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
