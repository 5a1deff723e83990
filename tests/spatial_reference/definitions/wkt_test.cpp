#include <array>

#include "spatial_reference/spatial_reference_test.h"

namespace {

using namespace Tests;

class WellKnownText : public SpatialReferenceTest {};

TEST_F(WellKnownText, ASystemIsWrittenAsWkt1InOneLine)
{
    EXPECT_EQ(writeWkt(*loadSystem(L"EPSG:28992")),
              L"PROJCS[\"Amersfoort / RD New\",GEOGCS[\"Amersfoort\",DATUM[\"Amersfoort\",SPHEROID[\"Bessel 1841\","
              L"6377397.155,299.1528128,AUTHORITY[\"EPSG\",\"7004\"]],AUTHORITY[\"EPSG\",\"6289\"]],"
              L"PRIMEM[\"Greenwich\",0,AUTHORITY[\"EPSG\",\"8901\"]],UNIT[\"degree\",0.0174532925199433,"
              L"AUTHORITY[\"EPSG\",\"9122\"]],AUTHORITY[\"EPSG\",\"4289\"]],PROJECTION[\"Oblique_Stereographic\"],"
              L"PARAMETER[\"latitude_of_origin\",52.1561605555556],PARAMETER[\"central_meridian\",5.38763888888889],"
              L"PARAMETER[\"scale_factor\",0.9999079],PARAMETER[\"false_easting\",155000],"
              L"PARAMETER[\"false_northing\",463000],UNIT[\"metre\",1,AUTHORITY[\"EPSG\",\"9001\"]],"
              L"AXIS[\"Easting\",EAST],AXIS[\"Northing\",NORTH],AUTHORITY[\"EPSG\",\"28992\"]]");
}

TEST_F(WellKnownText, AUnitKeepsItsIdentifier)
{
    EXPECT_NE(writeWkt(*loadSystem(L"EPSG:2263"))
                  .find(L"UNIT[\"US survey foot\",0.304800609601219,AUTHORITY[\"EPSG\",\"9003\"]]"),
              std::wstring::npos);
}

TEST_F(WellKnownText, AnEnsembleIsWrittenAsItsDatum)
{
    EXPECT_NE(writeWkt(*loadSystem(L"EPSG:4326")).find(L"DATUM[\"WGS_1984\""), std::wstring::npos);
}

TEST_F(WellKnownText, ALocalSystemIsWritten)
{
    EXPECT_EQ(
        writeWkt(*loadSystem(L"LOCAL:METRE")),
        L"LOCAL_CS[\"Local plane (metre)\",LOCAL_DATUM[\"Local datum\",32767],UNIT[\"metre\",1,AUTHORITY[\"EPSG\","
        L"\"9001\"]],AXIS[\"Easting\",EAST],AXIS[\"Northing\",NORTH],AUTHORITY[\"LOCAL\",\"METRE\"]]");
}

TEST_F(WellKnownText, ASystemBeyondWkt1IsWrittenAsWkt2WithStatusInexact)
{
    const std::wstring text = writeWkt(*loadSystem(L"EPSG:4979"), statusInexact); // three dimensions
    EXPECT_TRUE(text.starts_with(L"GEOGCRS[\"WGS 84\",DATUM[\"World Geodetic System 1984\",")) << text;
    EXPECT_TRUE(text.ends_with(L",ID[\"EPSG\",4979]]")) << text;
}

class WktBuffer : public WellKnownText {
protected:
    /// Writes the WKT into a buffer of so many characters.
    static Status write(const wchar_t* code, std::size_t characters, std::wstring& buffer)
    {
        const auto definition = loadSystem(code);
        buffer.assign(8192, L'#');
        return FormatConverter::DefinitionToWkt_s(definition.get(), wktFlavorDefault, buffer.data(), characters);
    }
};

TEST_F(WktBuffer, TheLengthOfTheBufferIncludesTheNul)
{
    std::wstring buffer;
    const std::size_t length = writeWkt(*loadSystem(L"EPSG:28992")).size();
    EXPECT_EQ(write(L"EPSG:28992", length, buffer), statusBufferTooSmall);
    EXPECT_EQ(buffer, std::wstring(8192, L'#'));
    EXPECT_EQ(write(L"EPSG:28992", length + 1, buffer), statusOk);
    EXPECT_EQ(buffer[length - 1], L']');
    EXPECT_EQ(buffer[length], L'\0');
    EXPECT_EQ(buffer[length + 1], L'#');
}

TEST_F(WktBuffer, ABufferTooSmallForFullWkt2GetsTheSimplifiedForm)
{
    std::wstring buffer;
    const std::wstring full = writeWkt(*loadSystem(L"EPSG:4979"), statusInexact);
    EXPECT_EQ(write(L"EPSG:4979", full.size(), buffer), statusInexact);
    const std::wstring simplified = buffer.c_str();
    EXPECT_LT(simplified.size(), full.size());
    EXPECT_TRUE(simplified.starts_with(L"GEODCRS[\"WGS 84\"") || simplified.starts_with(L"GEOGCRS[\"WGS 84\""));
    EXPECT_EQ(write(L"EPSG:4979", simplified.size() + 1, buffer), statusInexact);
    EXPECT_EQ(write(L"EPSG:4979", simplified.size(), buffer), statusBufferTooSmall);
    EXPECT_EQ(buffer, std::wstring(8192, L'#'));
}

TEST_F(WktBuffer, ABufferOfLengthZeroIsTooSmall)
{
    std::wstring buffer;
    EXPECT_EQ(write(L"EPSG:28992", 0, buffer), statusBufferTooSmall);
    EXPECT_EQ(buffer, std::wstring(8192, L'#'));
}

TEST_F(WellKnownText, InvalidArgumentsAreRefused)
{
    const auto definition = loadSystem(L"EPSG:28992");
    std::array<wchar_t, 4096> buffer{};
    EXPECT_EQ(FormatConverter::DefinitionToWkt_s(nullptr, wktFlavorDefault, buffer.data(), buffer.size()),
              statusInvalidArgument);
    EXPECT_EQ(FormatConverter::DefinitionToWkt_s(definition.get(), wktFlavorDefault, nullptr, 0),
              statusInvalidArgument);
    EXPECT_EQ(FormatConverter::DefinitionToWkt_s(definition.get(), WktFlavor(1), buffer.data(), buffer.size()),
              statusUnsupported);
    EXPECT_EQ(buffer[0], L'\0');
}

} // namespace
