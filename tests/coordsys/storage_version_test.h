// The fixture of rewriting a drawing's coordinate system into the forms of a drawing version.
#pragma once

#include "storage/definition_xrecord.h"
#include "support/coordsys_test.h"

namespace Tests {

class StorageVersionTest : public CoordsysTest {
protected:
    void SetUp() override { ASSERT_EQ(reactor.add(), Qeapp::eOk); }

    Qeapp::ErrorStatus apply(int version)
    {
        return Cs::ApplyCoordinateSystemStorageVersion(database(), static_cast<QeDb::QeDbDwgVersion>(version), &status);
    }
    void giveText(const SystemHolder& system) { drawing.withGeoData(serializedText(system.get())); }
    void giveAllForms(const wchar_t* code)
    {
        storeSystem(code);
        drawing.withLegacyCode(code);
        ASSERT_EQ(Orvel::WriteCsDefinitionXrecord(catalogSystem(code).get(), database()), Qeapp::eOk);
    }

    /// The xrecord that the definition has in a drawing of its own.
    static Items xrecordOf(const SystemHolder& system)
    {
        const Drawing other;
        EXPECT_EQ(Orvel::WriteCsDefinitionXrecord(system.get(), other.database()), Qeapp::eOk);
        return other.xrecord().value_or(Items());
    }
    static std::wstring wktOf(const SystemHolder& system)
    {
        std::vector<wchar_t> wkt(4096);
        const Library::Status converted = Library::FormatConverter::DefinitionToWkt_s(
            system.get(), Library::wktFlavorDefault, wkt.data(), wkt.size());
        EXPECT_TRUE(converted == Library::statusOk || converted == Library::statusInexact);
        return wkt.data();
    }

    void expectLegacyForms(const wchar_t* code, const SystemHolder& system) const
    {
        EXPECT_EQ(drawing.legacyChain(), (Items{{1001, L"KTN_PROJECTION"}, {1000, std::wstring(code)}}));
        EXPECT_EQ(drawing.xrecord(), xrecordOf(system));
        EXPECT_EQ(drawing.geoDataText(), wktOf(system));
    }
    void expectText(const SystemHolder& system) const
    {
        EXPECT_EQ(drawing.geoDataText(), serializedText(system.get(), true));
        EXPECT_EQ(drawing.legacyChain(), std::nullopt);
        EXPECT_EQ(drawing.xrecord(), std::nullopt);
    }
    void expectNoForm() const
    {
        EXPECT_EQ(drawing.geoDataText().value_or(L""), L"");
        EXPECT_EQ(drawing.legacyChain(), std::nullopt);
        EXPECT_EQ(drawing.xrecord(), std::nullopt);
    }
};

} // namespace Tests
