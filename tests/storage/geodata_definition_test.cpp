#include "storage/failing_calls.h"
#include "storage/geodata.h"
#include "storage/unusual_definitions.h"
#include "support/drawing.h"
#include "support/platform_test.h"

namespace Tests {
namespace {

using Embedded::ScopedFault;
using Orvel::WriteGeoDataSerialized;
using Orvel::WriteGeoDataWkt;

constexpr auto kUntouchedStatus = static_cast<Library::Status>(99);

std::wstring wktOf(const SystemHolder& system, Library::Status expected)
{
    std::wstring text(4096, L'\0');
    EXPECT_EQ(Library::FormatConverter::DefinitionToWkt_s(system.get(), Library::wktFlavorDefault, text.data(), 4096),
              expected);
    return text.substr(0, text.find(L'\0'));
}

class GeoDataDefinition : public PlatformTest {
protected:
    Drawing drawing;
    const SystemHolder system = catalogSystem(L"EPSG:25832");
    Library::Status status = kUntouchedStatus;

    Qeapp::ErrorStatus writeWkt(const SystemHolder& definition)
    {
        return WriteGeoDataWkt(drawing.database(), definition.get(), status);
    }
    Qeapp::ErrorStatus writeSerialized(const SystemHolder& definition)
    {
        return WriteGeoDataSerialized(drawing.database(), definition.get(), status);
    }
};

TEST_F(GeoDataDefinition, WktIsWrittenAsTheLibraryGivesIt)
{
    EXPECT_EQ(writeWkt(system), Qeapp::eOk);
    EXPECT_EQ(status, Library::statusOk);
    EXPECT_EQ(drawing.geoDataText(), wktOf(system, Library::statusOk));
    EXPECT_EQ(drawing.geoDataText()->substr(0, 8), L"PROJCS[\"");
}

TEST_F(GeoDataDefinition, InexactWktIsWrittenAllTheSame)
{
    const auto threeDimensional = catalogSystem(L"EPSG:4979");
    EXPECT_EQ(writeWkt(threeDimensional), Qeapp::eOk);
    EXPECT_EQ(status, 41);
    EXPECT_EQ(drawing.geoDataText(), wktOf(threeDimensional, Library::statusInexact));
    EXPECT_NE(drawing.geoDataText(), L"");
}

TEST_F(GeoDataDefinition, WktOfNoDefinitionBlanksTheObjectAndTouchesNoStatus)
{
    drawing.withGeoData(L"text");
    EXPECT_EQ(writeWkt({}), Qeapp::eOk);
    EXPECT_EQ(drawing.geoDataText(), L"");
    EXPECT_EQ(status, kUntouchedStatus);
}

TEST_F(GeoDataDefinition, WktOfNoDefinitionCreatesNoObject)
{
    EXPECT_EQ(writeWkt({}), Qeapp::eOk);
    EXPECT_EQ(drawing.geoDataText(), std::nullopt);
}

TEST_F(GeoDataDefinition, FailingConversionToWktIsThreeWithTheLibrarysStatus)
{
    drawing.withGeoData(L"text");
    for (const int code : {1, 40, 42, 52, 57}) {
        const ScopedFault fault(failing("FormatConverter::DefinitionToWkt_s", code));
        EXPECT_EQ(writeWkt(system), 3);
        EXPECT_EQ(status, code);
        EXPECT_EQ(drawing.geoDataText(), L"text");
    }
}

TEST_F(GeoDataDefinition, AcceptedConversionWithoutATextBlanksTheObject)
{
    drawing.withGeoData(L"text");
    const ScopedFault fault(failing("FormatConverter::DefinitionToWkt_s", 41)); // and leaves the buffer as it was
    EXPECT_EQ(writeWkt(system), Qeapp::eOk);
    EXPECT_EQ(status, 41);
    EXPECT_EQ(drawing.geoDataText(), L"");
}

TEST_F(GeoDataDefinition, WktOfMoreThan4095CharactersIsThree)
{
    drawing.withGeoData(L"text");
    EXPECT_EQ(writeWkt(UserSystem{.name = varied(4200)}.system()), 3);
    EXPECT_EQ(status, Library::statusBufferTooSmall);
    EXPECT_EQ(drawing.geoDataText(), L"text");
}

TEST_F(GeoDataDefinition, WktOf4095CharactersIsTheLongestThatIsWritten)
{
    const std::size_t frame = wktOf(UserSystem{.name = L"x"}.system(), Library::statusOk).size() - 1;
    EXPECT_EQ(writeWkt(UserSystem{.name = varied(4095 - frame)}.system()), Qeapp::eOk);
    EXPECT_EQ(drawing.geoDataText()->size(), 4095U);
    EXPECT_EQ(writeWkt(UserSystem{.name = varied(4096 - frame)}.system()), 3);
}

TEST_F(GeoDataDefinition, WktWithoutADatabaseIs124AfterTheConversion)
{
    EXPECT_EQ(WriteGeoDataWkt(nullptr, system.get(), status), 124);
    EXPECT_EQ(status, Library::statusOk);
    const ScopedFault fault(failing("FormatConverter::DefinitionToWkt_s", 52));
    EXPECT_EQ(WriteGeoDataWkt(nullptr, system.get(), status), 3);
    EXPECT_EQ(status, 52);
}

TEST_F(GeoDataDefinition, HostsFailureWhileWritingWktIsPassedOnUnchanged)
{
    const ScopedFault fault(failing("QeDbGeoData::postToDb"));
    EXPECT_EQ(writeWkt(system), kPlanned);
    EXPECT_EQ(status, Library::statusOk);
    EXPECT_EQ(drawing.geoDataText(), std::nullopt);
}

TEST_F(GeoDataDefinition, SerializedTextIsTheLibrarysWithDatumAndEllipsoid)
{
    EXPECT_EQ(writeSerialized(system), Qeapp::eOk);
    EXPECT_EQ(status, Library::statusOk);
    EXPECT_EQ(drawing.geoDataText(), serializedText(system.get(), true));
    EXPECT_NE(drawing.geoDataText(), serializedText(system.get(), false));
}

TEST_F(GeoDataDefinition, SerializedNoDefinitionBlanksTheObjectAndTouchesNoStatus)
{
    drawing.withGeoData(L"text");
    EXPECT_EQ(writeSerialized({}), Qeapp::eOk);
    EXPECT_EQ(drawing.geoDataText(), L"");
    EXPECT_EQ(status, kUntouchedStatus);
}

TEST_F(GeoDataDefinition, SerializedNoDefinitionCreatesNoObject)
{
    EXPECT_EQ(writeSerialized({}), Qeapp::eOk);
    EXPECT_EQ(drawing.geoDataText(), std::nullopt);
}

TEST_F(GeoDataDefinition, FailingSerializationIsThreeWithTheLibrarysStatus)
{
    drawing.withGeoData(L"text");
    for (const int code : {1, 41, 42, 52, 57}) { // here 41 has no privilege
        const ScopedFault fault(failing("DefinitionStream::Serialize_s", code));
        EXPECT_EQ(writeSerialized(system), 3);
        EXPECT_EQ(status, code);
        EXPECT_EQ(drawing.geoDataText(), L"text");
    }
}

TEST_F(GeoDataDefinition, SerializedTextThatDoesNotFitIsThree)
{
    drawing.withGeoData(L"text");
    EXPECT_EQ(writeSerialized(UserSystem{.name = varied(33000)}.system()), 3);
    EXPECT_EQ(status, Library::statusBufferTooSmall);
    EXPECT_EQ(drawing.geoDataText(), L"text");
}

TEST_F(GeoDataDefinition, SerializedWithoutADatabaseIs124AfterTheConversion)
{
    EXPECT_EQ(WriteGeoDataSerialized(nullptr, system.get(), status), 124);
    EXPECT_EQ(status, Library::statusOk);
    const ScopedFault fault(failing("DefinitionStream::Serialize_s", 52));
    EXPECT_EQ(WriteGeoDataSerialized(nullptr, system.get(), status), 3);
    EXPECT_EQ(status, 52);
}

TEST_F(GeoDataDefinition, HostsFailureWhileWritingTheSerializedTextIsPassedOnUnchanged)
{
    const ScopedFault fault(failing("QeDbGeoData::setBlockTableRecordId"));
    EXPECT_EQ(writeSerialized(system), kPlanned);
    EXPECT_EQ(status, Library::statusOk);
    EXPECT_EQ(drawing.geoDataText(), std::nullopt);
}

TEST_F(GeoDataDefinition, SecondAssignmentReplacesTheTextOfTheOneObject)
{
    ASSERT_EQ(writeSerialized(system), Qeapp::eOk);
    const auto objects = countOccurrences(drawing.contents(), "\nobject ");
    ASSERT_EQ(writeSerialized(catalogSystem(L"EPSG:2263")), Qeapp::eOk);
    EXPECT_EQ(drawing.geoDataText(), serializedText(catalogSystem(L"EPSG:2263").get()));
    EXPECT_EQ(countOccurrences(drawing.contents(), "\nobject "), objects);
}

} // namespace
} // namespace Tests
