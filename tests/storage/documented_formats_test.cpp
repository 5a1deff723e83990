// Decodes the examples on the pages about stored forms and encodes the results again. The examples do not depend on
// the edition of the catalog.
#include "embedded/base/text.h"
#include "storage/definition_xrecord.h"
#include "storage/documented_example.h"
#include "storage/geodata.h"
#include "storage/legacy_projection.h"
#include "storage/packed_definition.h"
#include "storage/packed_forms.h"
#include "storage/run_length_calls.h"
#include "support/drawing.h"
#include "support/platform_test.h"

namespace Tests {
namespace {

class DocumentedFormats : public PlatformTest {
protected:
    static Orvel::LibraryObject<Library::DefinitionBase> decoded(const Bytes& bytes)
    {
        return Orvel::DecodeDefinitionBytes(bytes.data(), bytes.size());
    }

    /// Expects the example to hold the definition, and the definition to be encoded as the example.
    static void expectPackedExample(const char* label, const Library::DefinitionBase* fromCatalog)
    {
        const DocumentedExample example("packed-definition.md", label);
        const auto definition = decoded(example.bytes());
        ASSERT_EQ(describe(definition.get()), describe(fromCatalog))
            << example.correction(printed(encoded(fromCatalog)));
        EXPECT_EQ(example.bytes(), encoded(definition.get())) << example.correction(printed(encoded(definition.get())));
    }
};

TEST_F(DocumentedFormats, DocumentedEllipsoidIsDecodedAndEncodedToTheSameBytes)
{
    expectPackedExample("packed-ellipsoid", catalogEllipsoid(L"EPSG:7019").get());
}

TEST_F(DocumentedFormats, DocumentedSystemIsDecodedAndEncodedToTheSameBytes)
{
    expectPackedExample("packed-system", catalogSystem(L"EPSG:25832").get());
}

TEST_F(DocumentedFormats, DocumentedPackedEllipsoidUnpacksToTheDocumentedBytes)
{
    const Bytes packedBytes = DocumentedExample("packed-definition.md", "packed-ellipsoid").bytes();
    const DocumentedExample example("packed-definition.md", "unpacked-ellipsoid");
    const Bytes unpackedBytes = unpacked(packedBytes);
    EXPECT_EQ(example.bytes(), unpackedBytes) << example.correction(printed(unpackedBytes));
}

TEST_F(DocumentedFormats, DocumentedPacketsArePackedAndUnpackedAsDocumented)
{
    const Bytes unpackedBytes = DocumentedExample("packed-definition.md", "unpacked-bytes").bytes();
    const DocumentedExample example("packed-definition.md", "packed-bytes");
    EXPECT_EQ(example.bytes(), packed(unpackedBytes)) << example.correction(printed(packed(unpackedBytes)));
    EXPECT_EQ(unpacked(example.bytes()), unpackedBytes);
}

TEST_F(DocumentedFormats, DocumentedXrecordIsReadAndWrittenUnchanged)
{
    const DocumentedExample example("definition-xrecord.md", "current-layout");
    Drawing fromCatalog;
    ASSERT_EQ(Orvel::WriteCsDefinitionXrecord(catalogSystem(L"EPSG:25832").get(), fromCatalog.database()), Qeapp::eOk);
    Drawing drawing;
    drawing.withXrecord(example.chain());
    Orvel::DefinitionSet definitions;
    ASSERT_TRUE(Orvel::ReadCsDefinitionXrecord(drawing.database(), L"EPSG:25832", definitions))
        << example.correction(printed(*fromCatalog.xrecord()));
    ASSERT_EQ(Orvel::WriteCsDefinitionXrecord(definitions.system.get(), drawing.database()), Qeapp::eOk);
    EXPECT_EQ(drawing.xrecord(), example.chain()) << example.correction(printed(*drawing.xrecord()));
}

TEST_F(DocumentedFormats, DocumentedOlderXrecordIsReadAsTheSameSystem)
{
    const DocumentedExample example("definition-xrecord.md", "older-layout");
    const auto local = catalogSystem(L"LOCAL:METRE");
    EXPECT_EQ(example.chain(), joinedItems({{{1071, 0}}, makeChunk(local.get())}))
        << example.correction(printed(joinedItems({{{1071, 0}}, makeChunk(local.get())})));
    Drawing drawing;
    drawing.withXrecord(example.chain());
    Orvel::DefinitionSet definitions;
    ASSERT_TRUE(Orvel::ReadCsDefinitionXrecord(drawing.database(), L"LOCAL:METRE", definitions));
    EXPECT_EQ(describe(definitions.system.get()), L"system LOCAL:METRE");
}

TEST_F(DocumentedFormats, DocumentedLegacyRecordIsReadAndWrittenUnchanged)
{
    const DocumentedExample example("legacy-projection.md", "record");
    Drawing given;
    given.withLegacyChain(example.chain());
    EXPECT_EQ(Orvel::ReadLegacyProjectionCode(given.database()), L"EPSG:25832");
    const Drawing written;
    ASSERT_EQ(Orvel::WriteLegacyProjectionCode(written.database(), L"EPSG:25832"), Qeapp::eOk);
    EXPECT_EQ(written.legacyChain(), example.chain()) << example.correction(printed(*written.legacyChain()));
}

TEST_F(DocumentedFormats, DocumentedLegacyRecordsWithoutACodeReadAsNoCode)
{
    for (const char* const label : {"record-with-dot", "record-with-real"}) {
        Drawing given;
        given.withLegacyChain(DocumentedExample("legacy-projection.md", label).chain());
        EXPECT_EQ(Orvel::ReadLegacyProjectionCode(given.database()), L"") << label;
    }
}

class DocumentedGeoData : public PlatformTest {
protected:
    const SystemHolder local = catalogSystem(L"LOCAL:METRE"); // the same in every edition of the catalog
    Drawing drawing;
    Library::Status status = Library::statusOk;

    void expectText(const char* label) const
    {
        const DocumentedExample example("geodata.md", label);
        const std::string text = Embedded::utf8FromWide(drawing.geoDataText().value_or(L""));
        EXPECT_EQ(example.text(), text) << example.correction(text);
    }
};

TEST_F(DocumentedGeoData, WrittenTextIsTheDocumentedText)
{
    ASSERT_EQ(Orvel::WriteGeoDataSerialized(drawing.database(), local.get(), status), Qeapp::eOk);
    expectText("serialized-text");
}

TEST_F(DocumentedGeoData, WrittenWktIsTheDocumentedWkt)
{
    ASSERT_EQ(Orvel::WriteGeoDataWkt(drawing.database(), local.get(), status), Qeapp::eOk);
    expectText("wkt");
}

} // namespace
} // namespace Tests
