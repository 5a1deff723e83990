// A drawing as a test gives and examines it, through the host's own calls.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "platform/host.h"
#include "support/chain.h"

namespace Tests {

/// Everything that a drawing holds, for comparing before and after.
std::string contentsOf(const QeDbDatabase& database);
/// How often one text occurs in another.
std::ptrdiff_t timesIn(std::string_view text, std::string_view part);
/// A drawing file in memory, and a drawing of its own from it.
std::string savedInMemory(QeDbDatabase& database);
std::unique_ptr<QeDbDatabase> loadedFromMemory(const std::string& bytes);

class Drawing {
public:
    explicit Drawing(QeDb::QeDbDwgVersion version = QeDb::kCurrentDwg);
    explicit Drawing(std::unique_ptr<QeDbDatabase> database) : database_(std::move(database)) {}

    QeDbDatabase* database() const { return database_.get(); }

    /// What the drawing is given.
    Drawing& withRegisteredApplication(const wchar_t* name = L"KTN_PROJECTION");
    Drawing& withLegacyCode(const std::wstring& code);
    /// Extended data of the named objects dictionary; the application is registered first.
    Drawing& withLegacyChain(const Items& items);
    /// An xrecord under a key of the named objects dictionary.
    Drawing& withXrecord(const Items& items, const wchar_t* key = L"ORVEL_CSINDWG_REGAPP");
    /// A dictionary under a key of the named objects dictionary.
    Drawing& withDictionary(const wchar_t* key);
    Drawing& withGeoData(const std::wstring& text);

    /// What the drawing holds.
    bool hasRegisteredApplication(const wchar_t* name = L"KTN_PROJECTION") const;
    /// Nothing where there is no extended data of the application.
    std::optional<Items> legacyChain() const;
    std::optional<Items> xrecord(const wchar_t* key = L"ORVEL_CSINDWG_REGAPP") const;
    std::optional<std::wstring> geoDataText() const;
    /// Whether the GeoData object is owned by model space.
    bool geoDataIsInModelSpace() const;
    /// Everything, for comparing before and after.
    std::string contents() const { return contentsOf(*database_); }

private:
    std::unique_ptr<QeDbDatabase> database_;
};

/// Where a sentence begins: `GivenDrawing().withLegacyCode(L"EPSG:25832")`.
inline Drawing GivenDrawing(QeDb::QeDbDwgVersion version = QeDb::kCurrentDwg)
{
    return Drawing(version);
}

} // namespace Tests
