// The arguments that the module passes to the library when it writes and reads definitions.
#include "recording/recording_test.h"

namespace Tests {
namespace {

constexpr auto kTextVersion = QeDb::kGeoDataTextDwg;
constexpr auto kPackedVersion = static_cast<QeDb::QeDbDwgVersion>(QeDb::kGeoDataTextDwg - 1);

class SerializationArguments : public RecordingTest {
protected:
    Qeapp::ErrorStatus serialize(QeDb::QeDbDwgVersion version)
    {
        unsigned char* bytes = nullptr;
        int length = 0;
        const Qeapp::ErrorStatus serialized =
            Cs::SerializeCoordinateSystem(system().get(), bytes, length, version, &status);
        block = bytes != nullptr ? Bytes(bytes, bytes + length) : Bytes();
        qeutDelBuffer(bytes);
        return serialized;
    }
    /// Reads the block, followed by a NUL unit, and returns the codes of its definitions.
    Texts deserialize(Bytes bytes)
    {
        const auto length = static_cast<int>(bytes.size());
        bytes.insert(bytes.end(), {0, 0, 0});
        ArrayHolder definitions;
        result = Cs::DeserializeCoordinateSystem(definitions.put(), bytes.data(), length, &status);
        Texts codes;
        for (int index = 0; definitions && index < definitions->GetCount(); ++index)
            codes.push_back(Orvel::definitionCode(definitions->GetItem(index)));
        return codes;
    }

    Bytes block;
};

TEST_F(SerializationArguments, AssignedSystem_IsWrittenInFormat4WithTheNewestSchemaToAZeroedBuffer)
{
    ASSERT_EQ(Cs::SetCoordinateSystem(system().get(), database(), &status), Qeapp::eOk);
    EXPECT_THAT(
        Recording::findCalls("DefinitionStream::Serialize_s"),
        ElementsAre("DefinitionStream::Serialize_s(MINE:1, 65536 zero bytes, format 4, schema -1, with dependents)"));
}

TEST_F(SerializationArguments, TextBlock_IsWrittenWithoutDependents)
{
    ASSERT_EQ(serialize(kTextVersion), Qeapp::eOk);
    EXPECT_THAT(Recording::findCalls("DefinitionStream::Serialize_s"),
                ElementsAre("DefinitionStream::Serialize_s(MINE:1, 65536 zero bytes, format 4, schema -1, "
                            "without dependents)"));
}

TEST_F(SerializationArguments, SuccessThatWritesNoText_GivesAnEmptyText)
{
    answers().written = Bytes();
    ASSERT_EQ(serialize(kTextVersion), Qeapp::eOk);
    EXPECT_EQ(block, Bytes({0, 0}));
}

TEST_F(SerializationArguments, FailureThatWritesAText_IsReturned)
{
    fail("DefinitionStream::Serialize_s");
    EXPECT_EQ(serialize(kTextVersion), Qeapp::eInvalidInput);
    EXPECT_EQ(Cs::SetCoordinateSystem(system().get(), database(), &status), Qeapp::eInvalidInput);
    EXPECT_EQ(drawing.geoDataText().value_or(L""), L"");
}

TEST_F(SerializationArguments, GeoDataText_IsReadInFormat0WithTheNewestSchema)
{
    drawing.withGeoData(L"ab");
    EXPECT_EQ(read(), Texts());
    EXPECT_THAT(Recording::findCalls("DefinitionStream::Deserialize_s"),
                ElementsAre("DefinitionStream::Deserialize_s(610062000000, format 0, schema -1)"));
}

TEST_F(SerializationArguments, TextBlock_IsReadInFormat0WithTheNewestSchema)
{
    EXPECT_EQ(deserialize({'a', 0, 'b', 0, 0, 0}), Texts());
    EXPECT_THAT(Recording::findCalls("DefinitionStream::Deserialize_s"),
                ElementsAre("DefinitionStream::Deserialize_s(610062000000, format 0, schema -1)"));
}

TEST_F(SerializationArguments, PackedBlock_IsWrittenInFormat2WithoutFlagsToAZeroedBuffer)
{
    ASSERT_EQ(serialize(kPackedVersion), Qeapp::eOk);
    EXPECT_THAT(Recording::findCalls("DefinitionStream::Add"), ElementsAre("DefinitionStream::Add(MINE:1)"));
    EXPECT_THAT(Recording::findCalls("DefinitionStream::Write"),
                ElementsAre("DefinitionStream::Write(1024 zero bytes, format 2, flags 0)"));
}

TEST_F(SerializationArguments, StreamReportedLongerThanItsBuffer_IsNotPacked)
{
    answers().writtenLength = 1024;
    EXPECT_EQ(serialize(kPackedVersion), Qeapp::eOk);
    answers().writtenLength = 1025;
    EXPECT_EQ(serialize(kPackedVersion), Qeapp::eInvalidInput);
}

TEST_F(SerializationArguments, PackedBlock_IsReadInFormat2WithFlag1)
{
    ASSERT_EQ(serialize(kPackedVersion), Qeapp::eOk);
    EXPECT_EQ(deserialize(block), Texts{L"MINE:1"});
    EXPECT_THAT(Recording::findCalls("DefinitionStream::Read"),
                ElementsAre("DefinitionStream::Read(0001, format 2, flags 1)"));
}

TEST_F(SerializationArguments, StreamThatFailsWithADefinition_IsRead)
{
    ASSERT_EQ(serialize(kPackedVersion), Qeapp::eOk);
    fail("DefinitionStream::Read");
    EXPECT_EQ(deserialize(block), Texts{L"MINE:1"});
    EXPECT_EQ(result, Qeapp::eOk);
}

TEST_F(SerializationArguments, Wkt_IsWrittenInTheDefaultFlavorTo4096Characters)
{
    ASSERT_EQ(Cs::SetCoordinateSystem(system().get(), database(), &status), Qeapp::eOk);
    ASSERT_EQ(Cs::ApplyCoordinateSystemStorageVersion(database(), kPackedVersion, &status), Qeapp::eOk);
    EXPECT_THAT(Recording::findCalls("FormatConverter::DefinitionToWkt_s"),
                ElementsAre("FormatConverter::DefinitionToWkt_s(MINE:1, flavor 0, 4096 characters)"));
    EXPECT_EQ(drawing.geoDataText(), L"WKT");
}

} // namespace
} // namespace Tests
