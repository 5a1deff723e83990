#include "embedded/spatial_reference/projjson/unit_check.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "embedded/base/parse_number.h"
#include "embedded/spatial_reference/projjson/canonical_projjson.h"
#include "embedded/spatial_reference/projjson/proj_object.h"
#include "platform/spatial_reference/status.h"

namespace Embedded {
namespace {

using Zentara::Infrastructure::SpatialReference::statusUnreadable;

constexpr std::array<std::string_view, 5> kKeywords{"LENGTHUNIT[", "ANGLEUNIT[", "SCALEUNIT[", "PARAMETRICUNIT[",
                                                    "TIMEUNIT["};
/// It belongs to the area of use, which the canonical PROJJSON leaves out.
constexpr std::string_view kVerticalExtent = "VERTICALEXTENT[";
/// The longitude 0 is the same in every unit, and the canonical PROJJSON leaves Greenwich out.
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

/// The length of what begins here and holds no unit that the canonical PROJJSON keeps; 0 where something else begins.
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

/// The factor follows the name. A factor that a number cannot hold counts as 0.
bool isAboveZero(std::string_view unit)
{
    const std::string_view text = unit.substr(std::min(unit.rfind(',') + 1, unit.size()));
    return parseReal(text).value_or(0) > 0;
}

std::optional<std::vector<std::string>> unitsOfObject(const PJ* object)
{
    const auto wkt = object ? wktOf(object, PJ_WKT2_2019) : std::nullopt;
    return wkt ? std::optional(unitsIn(*wkt)) : std::nullopt;
}

} // namespace

Expected<void> checkUnits(const PJ* object, const Projjson& projjson)
{
    const auto units = unitsOfObject(object);
    if (!units)
        return {};
    if (!std::ranges::all_of(*units, isAboveZero))
        return failure(statusUnreadable, "a unit has a factor that is not above 0");
    if (unitsOfObject(projObjectFrom(projjson).get()) != units)
        return failure(statusUnreadable, "a unit cannot be stored as the definition has it");
    return {};
}

} // namespace Embedded
