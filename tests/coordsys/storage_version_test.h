// The fixture for converting a drawing's coordinate system to the forms of a drawing version.
#pragma once

#include "support/coordsys_test.h"

namespace Tests {

class StorageVersionTest : public CoordsysTest {
protected:
    void SetUp() override { ASSERT_EQ(reactor.add(), Qeapp::eOk); }

    Qeapp::ErrorStatus apply(int version)
    {
        return Cs::ApplyCoordinateSystemStorageVersion(database(), static_cast<QeDb::QeDbDwgVersion>(version), &status);
    }
    void storeText(const SystemHolder& system) { drawing.withGeoData(serializedText(system.get())); }

    /// The xrecord that the definition has in a drawing of its own.
    static Items expectedXrecord(const SystemHolder& system)
    {
        const Drawing other;
        EXPECT_EQ(Orvel::WriteCsDefinitionXrecord(system.get(), other.database()), Qeapp::eOk);
        return other.xrecord().value_or(Items());
    }

    void expectLegacyForms(const wchar_t* code, const SystemHolder& system) const
    {
        EXPECT_EQ(drawing.legacyChain(), (Items{{1001, L"KTN_PROJECTION"}, {1000, std::wstring(code)}}));
        EXPECT_EQ(drawing.xrecord(), expectedXrecord(system));
        EXPECT_EQ(drawing.geoDataText(), exportWkt(system));
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
