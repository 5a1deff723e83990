// Assigns every live system of the catalog to a drawing, saves it in an older version, opens it, saves it in the
// current version and opens it again. Checks each stored form, and what is read from it.
#include <array>
#include <iostream>
#include <optional>
#include <string>

#include "catalog/catalog_codes.h"
#include "catalog/saved_drawing.h"
#include "coordsys/orvel_coordinate_system.h"
#include "embedded/base/text.h"
#include "embedded/host/application/application.h"
#include "support/drawing.h"
#include "support/library_definitions.h"
#include "support/platform_test.h"

namespace Tests {
namespace {

namespace Module = Zentara::Gis::Orvel::CoordinateSystem;
using Definition = Library::CoordinateReferenceSystemDefinition;

/// The module, loaded by the host, so that it takes part in saves.
class LoadedModule {
public:
    LoadedModule() : handle_(Embedded::loadModule(ORVEL_MODULE_FILE))
    {
        EXPECT_TRUE(handle_) << handle_.error().text();
    }
    LoadedModule(const LoadedModule&) = delete;
    LoadedModule& operator=(const LoadedModule&) = delete;
    ~LoadedModule() { EXPECT_EQ(Embedded::unloadModule(*handle_), Qeapp::eOk); }

private:
    Embedded::Expected<void*> handle_;
};

/// Everything that must stay the same.
struct Facts {
    std::wstring code;
    std::wstring name;
    int kind = 0;
    std::wstring datum;
    std::wstring ellipsoid;
    Library::Status wktStatus = Library::statusOk;
    std::wstring wkt;

    friend bool operator==(const Facts&, const Facts&) = default;
};

std::ostream& operator<<(std::ostream& out, const Facts& facts)
{
    const std::wstring line = facts.code + L", " + facts.name + L", kind " + std::to_wstring(facts.kind) + L", datum " +
                              facts.datum + L", ellipsoid " + facts.ellipsoid + L", " + facts.wkt;
    return out << Embedded::utf8FromWide(line) << ", status " << static_cast<int>(facts.wktStatus);
}

std::wstring queryText(const Definition& system, Library::Status (Definition::*query)(const wchar_t*&) const)
{
    const wchar_t* text = nullptr;
    EXPECT_EQ((system.*query)(text), Library::statusOk);
    return text != nullptr ? text : L"(null)";
}

Facts readFacts(const Definition& system)
{
    Facts facts{.code = queryText(system, &Definition::GetCode),
                .name = queryText(system, &Definition::GetName),
                .datum = queryText(system, &Definition::GetDatumCode),
                .ellipsoid = queryText(system, &Definition::GetEllipsoidCode),
                .wkt = {}};
    EXPECT_EQ(system.GetKind(facts.kind), Library::statusOk);
    std::array<wchar_t, 4096> wkt{}; // older readers have a buffer of this size
    facts.wktStatus =
        Library::FormatConverter::DefinitionToWkt_s(&system, Library::wktFlavorDefault, wkt.data(), wkt.size());
    facts.wkt = wkt.data();
    return facts;
}

/// The system, its datum if it has one, and its ellipsoid if it refers to the Earth.
Texts expectedDefinitions(const Facts& facts)
{
    Texts definitions = {L"system " + facts.code};
    if (!facts.datum.empty())
        definitions.push_back(L"datum " + facts.datum);
    if (facts.kind != Library::kindNotEarthReferenced)
        definitions.push_back(L"ellipsoid " + facts.ellipsoid);
    return definitions;
}

Texts storedDefinitions(const Drawing& drawing)
{
    ArrayHolder definitions;
    EXPECT_EQ(Module::GetCoordinateSystem(definitions.put(), drawing.database()), Qeapp::eOk);
    return definitions ? describe(definitions) : Texts();
}

/// The items of the chain except its chunks: the layout and the braces of the groups.
Items withoutChunks(const Items& chain)
{
    Items items;
    for (const Item& item : chain) {
        if (item.code != QeRb::kBinaryChunk)
            items.push_back(item);
    }
    return items;
}

Items expectedWithoutChunks(std::size_t groups)
{
    Items items = {{1071, 1}};
    for (std::size_t group = 0; group < groups; ++group) {
        items.push_back({1002, L"{"});
        items.push_back({1002, L"}"});
    }
    return items;
}

void expectOlderForms(const Drawing& drawing, const Facts& facts)
{
    const Texts definitions = expectedDefinitions(facts);
    ASSERT_EQ(drawing.legacyChain(), (Items{{1001, L"KTN_PROJECTION"}, {1000, facts.code}}));
    ASSERT_EQ(withoutChunks(drawing.xrecord().value_or(Items())), expectedWithoutChunks(definitions.size()));
    ASSERT_NE(facts.wkt, L"");
    ASSERT_EQ(drawing.geoDataText(), facts.wkt);
    // Only the xrecord gives the datum and the ellipsoid as well; the catalog would give the system without them.
    ASSERT_EQ(storedDefinitions(drawing), definitions);
}

void expectCurrentForm(const Drawing& drawing, const std::optional<std::wstring>& text)
{
    ASSERT_EQ(drawing.legacyChain(), std::nullopt);
    ASSERT_EQ(drawing.xrecord(), std::nullopt);
    ASSERT_EQ(drawing.geoDataText(), text);
}

void expectSystem(const Drawing& drawing, const Facts& facts)
{
    SystemHolder read;
    bool isKnown = false;
    ASSERT_EQ(Module::GetCoordinateSystem(read.put(), &isKnown, drawing.database()), Qeapp::eOk);
    ASSERT_TRUE(read);
    EXPECT_TRUE(isKnown);
    ASSERT_EQ(readFacts(*read.get()), facts);
}

class EverySystem : public PlatformTest, public testing::WithParamInterface<std::size_t> {
protected:
    /// Saves and restores the systems of this part. Prints the systems that cannot be saved; their saves must write
    /// nothing.
    void expectRoundTrips(const char* kind, const std::vector<std::wstring>& codes)
    {
        const LoadedModule module;
        const std::vector<std::wstring> part = selectPart(codes, GetParam());
        for (const std::wstring& code : part) {
            SCOPED_TRACE(Embedded::utf8FromWide(code));
            expectRoundTrip(code);
            if (HasFatalFailure())
                return;
        }
        report(kind, codes.size());
        EXPECT_EQ(stored_, part.size());
        EXPECT_EQ(refused_, Texts());
    }

private:
    void expectRoundTrip(const std::wstring& code)
    {
        const SystemHolder system = catalogSystem(code.c_str());
        const Facts facts = readFacts(*system.get());
        const Drawing drawing;
        ASSERT_EQ(Module::SetCoordinateSystem(system.get(), drawing.database()), Qeapp::eOk);
        const std::optional<std::wstring> text = drawing.geoDataText();
        const std::optional<std::string> older = saveToMemory(drawing, 29);
        if (!older) {
            expectCurrentForm(drawing, text);
            return refused_.push_back(code);
        }
        const Drawing opened = loadDrawing(*older);
        expectOlderForms(opened, facts);
        const std::optional<std::string> current = saveToMemory(opened, QeDb::kCurrentDwg);
        ASSERT_TRUE(current);
        const Drawing openedAgain = loadDrawing(*current);
        expectCurrentForm(openedAgain, text);
        expectSystem(openedAgain, facts);
        ++stored_;
    }

    void report(const char* kind, std::size_t listed) const
    {
        std::cout << stored_ << ' ' << kind << " systems went through the older forms and back, of " << listed
                  << " that the catalog lists; " << refused_.size() << " were refused";
        for (const std::wstring& code : refused_)
            std::cout << ' ' << Embedded::utf8FromWide(code);
        std::cout << '\n';
    }

    std::size_t stored_ = 0;
    Texts refused_;
};

TEST_P(EverySystem, ProjectedOrGeographicSystem_IsSavedInOlderFormsAndRestored)
{
    const std::vector<std::wstring> codes = liveProjectedAndGeographicCodes();
    EXPECT_GT(codes.size(), 9000U);
    expectRoundTrips("projected and geographic", codes);
}

TEST_P(EverySystem, CompoundGeocentricOrLocalSystem_IsSavedInOlderFormsAndRestored)
{
    std::vector<std::wstring> codes = liveCompoundAndGeocentricCodes();
    EXPECT_GT(codes.size(), 900U);
    codes.insert(codes.end(), {L"LOCAL:METRE", L"LOCAL:FOOT", L"LOCAL:US-SURVEY-FOOT"});
    expectRoundTrips("compound, geocentric and local", codes);
}

INSTANTIATE_TEST_SUITE_P(Half, EverySystem, testing::Range(std::size_t{0}, kCatalogParts));

} // namespace
} // namespace Tests
