#include "embedded/spatial_reference/projjson/unit_check.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string>
#include <string_view>
#include <vector>

#include "embedded/spatial_reference/projjson/canonical_projjson.h"

namespace Embedded {
namespace {

constexpr std::array<std::string_view, 5> kKeywords{"LENGTHUNIT[", "ANGLEUNIT[", "SCALEUNIT[", "PARAMETRICUNIT[",
                                                    "TIMEUNIT["};
/// Of the area of use, which documents leave out.
constexpr std::string_view kVerticalExtent = "VERTICALEXTENT[";
/// Whose longitude of zero is one in every unit; documents leave Greenwich out.
constexpr std::string_view kMeridian = "PRIMEM[";
constexpr std::string_view kZero = ",0,";

/// The length of the quoted text that begins here, in which a quotation mark is doubled.
std::size_t lengthOfQuoted(std::string_view wkt)
{
    std::size_t end = 1;
    while (end < wkt.size() && (wkt[end] != '"' || wkt.substr(end, 2) == "\"\""))
        end += wkt[end] == '"' ? 2U : 1U;
    return std::min(end + 1, wkt.size());
}

/// Keyword, name and factor of the unit that begins here; empty where none begins.
std::string_view unitAt(std::string_view wkt)
{
    for (const std::string_view keyword : kKeywords) {
        if (!wkt.starts_with(keyword))
            continue;
        const std::size_t factor = keyword.size() + lengthOfQuoted(wkt.substr(keyword.size())) + 1;
        return wkt.substr(0, wkt.find_first_of(",]", std::min(factor, wkt.size())));
    }
    return {};
}

/// The length of what begins here and holds no unit that documents keep; 0 where something else begins.
std::size_t lengthOfUnitless(std::string_view wkt)
{
    if (wkt.starts_with('"'))
        return lengthOfQuoted(wkt);
    if (wkt.starts_with(kVerticalExtent))
        return std::min(wkt.find("]]"), wkt.size());
    if (!wkt.starts_with(kMeridian))
        return 0;
    const std::size_t value = kMeridian.size() + lengthOfQuoted(wkt.substr(kMeridian.size()));
    const std::string_view rest = wkt.substr(value);
    return rest.starts_with(kZero) ? value + kZero.size() + unitAt(rest.substr(kZero.size())).size() : value;
}

std::vector<std::string> unitsIn(std::string_view wkt)
{
    std::vector<std::string> units;
    while (!wkt.empty()) {
        const std::string_view unit = unitAt(wkt);
        if (!unit.empty())
            units.emplace_back(unit);
        wkt.remove_prefix(std::max<std::size_t>({unit.size(), lengthOfUnitless(wkt), 1}));
    }
    return units;
}

/// The factor stands behind the name, and is 0 where it is too small for a number.
bool isAboveZero(std::string_view unit)
{
    const std::string_view text = unit.substr(std::min(unit.rfind(',') + 1, unit.size()));
    double factor = 0;
    std::from_chars(text.data(), text.data() + text.size(), factor);
    return factor > 0;
}

std::optional<std::vector<std::string>> unitsOfObject(const PJ* object)
{
    const char* const options[] = {"MULTILINE=NO", nullptr};
    const char* wkt = object ? proj_as_wkt(projContext(), object, PJ_WKT2_2019, options) : nullptr;
    return wkt ? std::optional(unitsIn(wkt)) : std::nullopt;
}

} // namespace

std::optional<std::string> faultOfUnits(const PJ* object, const Projjson& document)
{
    const auto units = unitsOfObject(object);
    if (!units)
        return std::nullopt;
    if (!std::ranges::all_of(*units, isAboveZero))
        return "a unit has a factor that is not above 0";
    if (unitsOfObject(projObjectFrom(document).get()) != units)
        return "a unit cannot be stored as the definition has it";
    return std::nullopt;
}

} // namespace Embedded
