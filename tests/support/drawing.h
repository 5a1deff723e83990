// A drawing that a test fills and examines through the host's own calls.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "platform/host.h"
#include "support/chain.h"

namespace Tests {

/// Writes everything that a drawing holds as text to compare.
std::string drawingContents(const QeDbDatabase& database);
/// Counts how often `part` occurs in the text.
std::ptrdiff_t countOccurrences(std::string_view text, std::string_view part);
std::string saveToBytes(QeDbDatabase& database);
std::unique_ptr<QeDbDatabase> loadFromBytes(const std::string& bytes);

class Drawing {
public:
    explicit Drawing(QeDb::QeDbDwgVersion version = QeDb::kCurrentDwg);
    explicit Drawing(std::unique_ptr<QeDbDatabase> database) : database_(std::move(database)) {}

    QeDbDatabase* database() const { return database_.get(); }

    /// Functions that fill the drawing.
    Drawing& withRegisteredApplication(const wchar_t* name = L"KTN_PROJECTION");
    Drawing& withLegacyCode(const std::wstring& code);
    /// Sets extended data of the named objects dictionary and registers its application.
    Drawing& withLegacyChain(const Items& items);
    /// Adds an xrecord under a key of the named objects dictionary.
    Drawing& withXrecord(const Items& items, const wchar_t* key = L"ORVEL_CSINDWG_REGAPP");
    /// Adds a dictionary under a key of the named objects dictionary.
    Drawing& withDictionary(const wchar_t* key);
    Drawing& withGeoData(const std::wstring& text);

    /// Functions that examine the drawing.
    bool hasRegisteredApplication(const wchar_t* name = L"KTN_PROJECTION") const;
    /// Nothing if the application has no extended data.
    std::optional<Items> legacyChain() const;
    std::optional<Items> xrecord(const wchar_t* key = L"ORVEL_CSINDWG_REGAPP") const;
    std::optional<std::wstring> geoDataText() const;
    /// Whether the GeoData object is owned by model space.
    bool geoDataIsInModelSpace() const;
    std::string contents() const { return drawingContents(*database_); }

private:
    std::unique_ptr<QeDbDatabase> database_;
};

/// Starts a sentence: `GivenDrawing().withLegacyCode(L"EPSG:25832")`.
inline Drawing GivenDrawing(QeDb::QeDbDwgVersion version = QeDb::kCurrentDwg)
{
    return Drawing(version);
}

} // namespace Tests
