#include "storage/failing_calls.h"
#include "storage/legacy_projection.h"
#include "support/drawing.h"
#include "support/platform_test.h"

namespace Tests {
namespace {

using Embedded::ScopedFault;

const Item kName{1001, L"KTN_PROJECTION"};

class LegacyProjectionReading : public PlatformTest {
protected:
    static std::wstring readFrom(const Drawing& drawing) { return Orvel::ReadLegacyProjectionCode(drawing.database()); }
    static std::wstring readFrom(const Items& chain) { return readFrom(Drawing().withLegacyChain(chain)); }
};

TEST_F(LegacyProjectionReading, CodeIsReadFromTheSecondItem)
{
    EXPECT_EQ(readFrom({kName, {1000, L"EPSG:25832"}}), L"EPSG:25832");
}

TEST_F(LegacyProjectionReading, EmptyDrawingReadsAsNoCode)
{
    EXPECT_EQ(readFrom(Drawing()), L"");
}

TEST_F(LegacyProjectionReading, RegisteredApplicationWithoutARecordReadsAsNoCode)
{
    EXPECT_EQ(readFrom(Drawing().withRegisteredApplication()), L"");
}

TEST_F(LegacyProjectionReading, RecordWithoutASecondItemReadsAsNoCode)
{
    EXPECT_EQ(readFrom({kName}), L"");
}

TEST_F(LegacyProjectionReading, DotReadsAsNoCode)
{
    EXPECT_EQ(readFrom({kName, {1000, L"."}}), L"");
}

TEST_F(LegacyProjectionReading, TextThatBeginsWithADotIsACode)
{
    EXPECT_EQ(readFrom({kName, {1000, L".."}}), L"..");
    EXPECT_EQ(readFrom({kName, {1000, L". "}}), L". ");
}

TEST_F(LegacyProjectionReading, EmptyStringReadsAsNoCode)
{
    EXPECT_EQ(readFrom({kName, {1000, L""}}), L"");
}

TEST_F(LegacyProjectionReading, SecondItemWithAnotherGroupCodeReadsAsNoCode)
{
    EXPECT_EQ(readFrom({kName, {1040, 25832.0}}), L"");
    EXPECT_EQ(readFrom({kName, {1070, 1}}), L"");
    EXPECT_EQ(readFrom({kName, {1071, 25832}}), L"");
    EXPECT_EQ(readFrom({kName, {1002, L"{"}}), L"");
    EXPECT_EQ(readFrom({kName, {1004, Bytes{1}}}), L"");
}

TEST_F(LegacyProjectionReading, ThirdItemIsNotReadAsTheCode)
{
    EXPECT_EQ(readFrom({kName, {1070, 1}, {1000, L"EPSG:25832"}}), L"");
    EXPECT_EQ(readFrom({kName, {1000, L"."}, {1000, L"EPSG:25832"}}), L"");
}

TEST_F(LegacyProjectionReading, ItemsAfterTheCodeAreIgnored)
{
    EXPECT_EQ(readFrom({kName, {1000, L"EPSG:25832"}, {1000, L"EPSG:25833"}, {1040, 1.0}}), L"EPSG:25832");
}

TEST_F(LegacyProjectionReading, CodeIsReadUnchanged)
{
    const std::wstring code = L" epsg:25832\t\x00E4\x4E16" + std::wstring(400, L'z');
    EXPECT_EQ(readFrom({kName, {1000, code}}), code);
}

TEST_F(LegacyProjectionReading, DataOfAnotherApplicationReadsAsNoCode)
{
    Drawing drawing;
    drawing.withRegisteredApplication(L"OTHER").withLegacyChain({{1001, L"OTHER"}, {1000, L"EPSG:25832"}});
    EXPECT_EQ(readFrom(drawing), L"");
}

TEST_F(LegacyProjectionReading, DataOfAnotherApplicationDoesNotHideTheCode)
{
    Drawing drawing;
    drawing.withRegisteredApplication(L"ANOTHER").withLegacyChain({{1001, L"ANOTHER"}, {1000, L"x"}});
    drawing.withLegacyCode(L"EPSG:25832");
    EXPECT_EQ(readFrom(drawing), L"EPSG:25832");
}

TEST_F(LegacyProjectionReading, DictionaryThatIsOpenForWriteReadsAsNoCode)
{
    Drawing drawing;
    drawing.withLegacyCode(L"EPSG:25832");
    Orvel::NamedObjects writer;
    ASSERT_EQ(writer.openIn(drawing.database(), QeDb::kForWrite), Qeapp::eOk);
    EXPECT_EQ(readFrom(drawing), L"");
}

TEST_F(LegacyProjectionReading, DictionaryThatIsOpenForReadIsRead)
{
    Drawing drawing;
    drawing.withLegacyCode(L"EPSG:25832");
    Orvel::NamedObjects reader;
    ASSERT_EQ(reader.openIn(drawing.database(), QeDb::kForRead), Qeapp::eOk);
    EXPECT_EQ(readFrom(drawing), L"EPSG:25832");
}

TEST_F(LegacyProjectionReading, EveryFailingCallReadsAsNoCode)
{
    Drawing drawing;
    drawing.withLegacyCode(L"EPSG:25832");
    const auto calls = recordFallibleCalls([&] { EXPECT_EQ(readFrom(drawing), L"EPSG:25832"); });
    EXPECT_GE(calls.size(), 2U);
    for (const FallibleCall& call : calls) {
        const ScopedFault fault(failing(call));
        EXPECT_EQ(readFrom(drawing), L"") << call;
    }
}

TEST_F(LegacyProjectionReading, OpeningThatSucceedsWithoutADictionaryReadsAsNoCode)
{
    Drawing drawing;
    drawing.withLegacyCode(L"EPSG:25832");
    const ScopedFault fault(failing("QeDbDatabase::getNamedObjectsDictionary", 0));
    EXPECT_EQ(readFrom(drawing), L"");
}

TEST_F(LegacyProjectionReading, ReadingLeavesTheDrawingUnchanged)
{
    Drawing drawing;
    const std::string before = drawing.contents();
    EXPECT_EQ(readFrom(drawing), L"");
    EXPECT_EQ(drawing.contents(), before);
}

} // namespace
} // namespace Tests
