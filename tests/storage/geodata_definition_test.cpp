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

TEST_F(GeoDataDefinition, WrittenWktIsTheLibrarysWkt)
{
    EXPECT_EQ(writeWkt(system), Qeapp::eOk);
    EXPECT_EQ(status, Library::statusOk);
    EXPECT_EQ(drawing.geoDataText(), exportWkt(system));
    EXPECT_EQ(drawing.geoDataText()->substr(0, 8), L"PROJCS[\"");
}

TEST_F(GeoDataDefinition, InexactWktIsWritten)
{
    const auto threeDimensional = catalogSystem(L"EPSG:4979");
    EXPECT_EQ(writeWkt(threeDimensional), Qeapp::eOk);
    EXPECT_EQ(status, 41);
    EXPECT_EQ(drawing.geoDataText(), exportWkt(threeDimensional));
    EXPECT_NE(drawing.geoDataText(), L"");
}

TEST_F(GeoDataDefinition, Wkt_OfNullDefinition_BlanksTheObjectAndLeavesTheStatus)
{
    drawing.withGeoData(L"text");
    EXPECT_EQ(writeWkt({}), Qeapp::eOk);
    EXPECT_EQ(drawing.geoDataText(), L"");
    EXPECT_EQ(status, kUntouchedStatus);
}

TEST_F(GeoDataDefinition, Wkt_OfNullDefinition_CreatesNoObject)
{
    EXPECT_EQ(writeWkt({}), Qeapp::eOk);
    EXPECT_EQ(drawing.geoDataText(), std::nullopt);
}

TEST_F(GeoDataDefinition, FailingConversionToWktReturns3AndTheLibrarysStatus)
{
    drawing.withGeoData(L"text");
    for (const int code : {1, 40, 42, 52, 57}) {
        const ScopedFault fault(failing("FormatConverter::DefinitionToWkt_s", code));
        EXPECT_EQ(writeWkt(system), 3);
        EXPECT_EQ(status, code);
        EXPECT_EQ(drawing.geoDataText(), L"text");
    }
}

TEST_F(GeoDataDefinition, ConversionThatSucceedsWithoutATextBlanksTheObject)
{
    drawing.withGeoData(L"text");
    const ScopedFault fault(failing("FormatConverter::DefinitionToWkt_s", 41)); // writes nothing to the buffer
    EXPECT_EQ(writeWkt(system), Qeapp::eOk);
    EXPECT_EQ(status, 41);
    EXPECT_EQ(drawing.geoDataText(), L"");
}

TEST_F(GeoDataDefinition, WktOfMoreThan4095CharactersReturns3)
{
    drawing.withGeoData(L"text");
    EXPECT_EQ(writeWkt(UserSystem{.name = varied(4200)}.makeSystem()), 3);
    EXPECT_EQ(status, Library::statusBufferTooSmall);
    EXPECT_EQ(drawing.geoDataText(), L"text");
}

TEST_F(GeoDataDefinition, LongestWrittenWktHas4095Characters)
{
    const std::size_t fixedLength = exportWkt(UserSystem{.name = L"x"}.makeSystem()).size() - 1;
    EXPECT_EQ(writeWkt(UserSystem{.name = varied(4095 - fixedLength)}.makeSystem()), Qeapp::eOk);
    EXPECT_EQ(drawing.geoDataText()->size(), 4095U);
    EXPECT_EQ(writeWkt(UserSystem{.name = varied(4096 - fixedLength)}.makeSystem()), 3);
}

TEST_F(GeoDataDefinition, WktWithoutADatabaseReturns124AfterTheConversion)
{
    EXPECT_EQ(WriteGeoDataWkt(nullptr, system.get(), status), 124);
    EXPECT_EQ(status, Library::statusOk);
    const ScopedFault fault(failing("FormatConverter::DefinitionToWkt_s", 52));
    EXPECT_EQ(WriteGeoDataWkt(nullptr, system.get(), status), 3);
    EXPECT_EQ(status, 52);
}

TEST_F(GeoDataDefinition, HostFailureWhileWritingWktIsReturned)
{
    const ScopedFault fault(failing("QeDbGeoData::postToDb"));
    EXPECT_EQ(writeWkt(system), kInjectedResult);
    EXPECT_EQ(status, Library::statusOk);
    EXPECT_EQ(drawing.geoDataText(), std::nullopt);
}

TEST_F(GeoDataDefinition, SerializedTextHasDatumAndEllipsoid)
{
    EXPECT_EQ(writeSerialized(system), Qeapp::eOk);
    EXPECT_EQ(status, Library::statusOk);
    EXPECT_EQ(drawing.geoDataText(), serializedText(system.get(), true));
    EXPECT_NE(drawing.geoDataText(), serializedText(system.get(), false));
}

TEST_F(GeoDataDefinition, SerializedText_OfNullDefinition_BlanksTheObjectAndLeavesTheStatus)
{
    drawing.withGeoData(L"text");
    EXPECT_EQ(writeSerialized({}), Qeapp::eOk);
    EXPECT_EQ(drawing.geoDataText(), L"");
    EXPECT_EQ(status, kUntouchedStatus);
}

TEST_F(GeoDataDefinition, SerializedText_OfNullDefinition_CreatesNoObject)
{
    EXPECT_EQ(writeSerialized({}), Qeapp::eOk);
    EXPECT_EQ(drawing.geoDataText(), std::nullopt);
}

TEST_F(GeoDataDefinition, FailingSerializationReturns3AndTheLibrarysStatus)
{
    drawing.withGeoData(L"text");
    for (const int code : {1, 41, 42, 52, 57}) { // 41 is a failure here
        const ScopedFault fault(failing("DefinitionStream::Serialize_s", code));
        EXPECT_EQ(writeSerialized(system), 3);
        EXPECT_EQ(status, code);
        EXPECT_EQ(drawing.geoDataText(), L"text");
    }
}

TEST_F(GeoDataDefinition, SerializedTextThatDoesNotFitReturns3)
{
    drawing.withGeoData(L"text");
    EXPECT_EQ(writeSerialized(UserSystem{.name = varied(33000)}.makeSystem()), 3);
    EXPECT_EQ(status, Library::statusBufferTooSmall);
    EXPECT_EQ(drawing.geoDataText(), L"text");
}

TEST_F(GeoDataDefinition, SerializedTextWithoutADatabaseReturns124AfterTheConversion)
{
    EXPECT_EQ(WriteGeoDataSerialized(nullptr, system.get(), status), 124);
    EXPECT_EQ(status, Library::statusOk);
    const ScopedFault fault(failing("DefinitionStream::Serialize_s", 52));
    EXPECT_EQ(WriteGeoDataSerialized(nullptr, system.get(), status), 3);
    EXPECT_EQ(status, 52);
}

TEST_F(GeoDataDefinition, HostFailureWhileWritingSerializedTextIsReturned)
{
    const ScopedFault fault(failing("QeDbGeoData::setBlockTableRecordId"));
    EXPECT_EQ(writeSerialized(system), kInjectedResult);
    EXPECT_EQ(status, Library::statusOk);
    EXPECT_EQ(drawing.geoDataText(), std::nullopt);
}

TEST_F(GeoDataDefinition, SecondWriteReplacesTheTextInTheSameObject)
{
    ASSERT_EQ(writeSerialized(system), Qeapp::eOk);
    const auto objects = countOccurrences(drawing.contents(), "\nobject ");
    ASSERT_EQ(writeSerialized(catalogSystem(L"EPSG:2263")), Qeapp::eOk);
    EXPECT_EQ(drawing.geoDataText(), serializedText(catalogSystem(L"EPSG:2263").get()));
    EXPECT_EQ(countOccurrences(drawing.contents(), "\nobject "), objects);
}

} // namespace
} // namespace Tests
