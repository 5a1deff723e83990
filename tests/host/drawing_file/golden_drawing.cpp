#include "host/drawing_file/golden_drawing.h"

#include <bit>
#include <cstdint>
#include <limits>

#include "support/file_text.h"

namespace Tests {

std::filesystem::path goldenFolder(int format)
{
    return std::filesystem::path(ORVEL_SOURCE_DIR) / "tests" / "golden" / ("format_" + std::to_string(format));
}

std::string goldenSql(const std::string& name)
{
    return readFile(goldenFolder(2) / (name + ".sql"));
}

std::string goldenText(const std::string& name)
{
    return readFile(goldenFolder(2) / (name + ".txt"));
}

Drawing drawingOfEverything()
{
    using Limits = std::numeric_limits<double>;
    const auto unpaired = static_cast<wchar_t>(0xD83D);
    Drawing drawing(static_cast<QeDb::QeDbDwgVersion>(30));
    drawing.withLegacyCode(L"EPSG:25832").withRegisteredApplication(L"Stra\u00DFe");
    drawing.withGeoData(L"LOCAL_CS[\"Werksnetz \u9AD8\u5EA6\"]");
    drawing.withXrecord({{300, L"L\u00E4nge \"\u00F6stlich\" \U0001F30D"},
                         {301, std::wstring(L"A") + unpaired + L"B"},
                         {309, L""},
                         {1000, L"it's\ttabbed"},
                         {1002, L"{"}},
                        L"texts");
    drawing.withXrecord({{1040, 0.0},
                         {1040, -0.0},
                         {1040, 6378137.0},
                         {1040, 0.1},
                         {1040, Limits::denorm_min()},
                         {1040, Limits::max()},
                         {1040, Limits::infinity()},
                         {1040, -Limits::infinity()},
                         {1040, std::bit_cast<double>(std::uint64_t{0x7FF80000DEADBEEF})}},
                        L"reals");
    drawing.withXrecord({{1070, -32768}, {1070, 32767}, {1071, -2147483647 - 1}, {1071, 2147483647}}, L"integers");
    drawing.withXrecord({{310, Bytes{}}, {311, Bytes{0, 1, 0xFF}}, {1004, Bytes(127, 0x5A)}}, L"chunks");
    drawing.withXrecord({}, L"nothing").withDictionary(L"dictionary");
    drawing.withXrecord({{1071, 1}}, (std::wstring(L"k\u00E4y ") + unpaired).c_str());
    return drawing;
}

} // namespace Tests
