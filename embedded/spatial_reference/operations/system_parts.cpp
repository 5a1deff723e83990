#include "embedded/spatial_reference/operations/system_parts.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "embedded/base/text.h"
#include "embedded/spatial_reference/catalog/catalog_database.h"
#include "embedded/spatial_reference/catalog/catalog_loader.h"
#include "embedded/spatial_reference/operations/operation_error.h"
#include "embedded/spatial_reference/projjson/canonical_projjson.h"
#include "embedded/spatial_reference/projjson/proj_object.h"

namespace Embedded {
namespace {

using namespace Zentara::Infrastructure::SpatialReference;

/// An ensemble of datums counts as one datum.
ProjObject datumOf(const PJ* horizontal)
{
    const ProjObject geodetic(proj_crs_get_geodetic_crs(projContext(), horizontal));
    return ProjObject(geodetic ? proj_crs_get_datum_forced(projContext(), geodetic.get()) : nullptr);
}

void requireReadableAliases()
{
    static bool areReadable = false;
    if (areReadable)
        return;
    requireReadable(checkAliases());
    areReadable = true;
}

void requireOnEarth(const DefinitionData& system)
{
    if (system.kind == kindNotEarthReferenced)
        throwOperationError(OperationError::notEarthReferenced, system.code,
                            "is not referenced to the Earth, so nothing leads from or to it");
}

AxisDirection axisDirection(const char* name)
{
    constexpr std::array<std::pair<std::string_view, AxisDirection>, 4> kDirections{{{"north", AxisDirection::north},
                                                                                     {"south", AxisDirection::south},
                                                                                     {"east", AxisDirection::east},
                                                                                     {"west", AxisDirection::west}}};
    const auto found =
        std::ranges::find(kDirections, std::string_view(name), [](const auto& entry) { return entry.first; });
    return found != kDirections.end() ? found->second : AxisDirection::other;
}

std::vector<AxisUnit> readUnits(const PJ* system)
{
    std::vector<AxisUnit> units;
    const ProjObject axes(proj_crs_get_coordinate_system(projContext(), system));
    if (!axes)
        return units;
    const bool isEllipsoidal = proj_cs_get_type(projContext(), axes.get()) == PJ_CS_TYPE_ELLIPSOIDAL;
    const int count = proj_cs_get_axis_count(projContext(), axes.get());
    for (int index = 0; index < count; ++index) {
        AxisUnit unit;
        const char* direction = "";
        unit.isAngular = isEllipsoidal && index < 2;
        if (!proj_cs_get_axis_info(projContext(), axes.get(), index, nullptr, nullptr, &direction, &unit.toBaseUnit,
                                   nullptr, nullptr, nullptr))
            continue;
        unit.direction = axisDirection(direction);
        units.push_back(unit);
    }
    return units;
}

/// The name, abbreviation and direction of the first axis, which together are different from those of the second.
std::string describeFirstAxis(const PJ* system)
{
    const ProjObject axes(system ? proj_crs_get_coordinate_system(projContext(), system) : nullptr);
    const char* name = nullptr;
    const char* abbreviation = nullptr;
    const char* direction = nullptr;
    if (!axes || !proj_cs_get_axis_info(projContext(), axes.get(), 0, &name, &abbreviation, &direction, nullptr,
                                        nullptr, nullptr, nullptr))
        return {};
    return std::string(name) + "," + abbreviation + "," + direction;
}

/// Asks PROJ, which has exceptions such as the systems of the poles.
bool isNorthingFirst(const PJ* horizontal)
{
    if (!horizontal)
        return false;
    const ProjObject displayed(proj_normalize_for_visualization(projContext(), horizontal));
    return displayed && describeFirstAxis(displayed.get()) != describeFirstAxis(horizontal);
}

} // namespace

bool SystemParts::hasEllipsoidalHeight() const
{
    if (!horizontal || !vertical.empty())
        return false;
    const ProjObject axes(proj_crs_get_coordinate_system(projContext(), horizontal.get()));
    return axes && proj_cs_get_axis_count(projContext(), axes.get()) == 3;
}

SystemParts splitSystem(ProjObject system)
{
    SystemParts parts;
    if (proj_get_type(system.get()) == PJ_TYPE_COMPOUND_CRS) {
        parts.horizontal.reset(proj_crs_get_sub_crs(projContext(), system.get(), 0));
        const ProjObject vertical(proj_crs_get_sub_crs(projContext(), system.get(), 1));
        parts.vertical = codeOfObject(vertical.get());
    } else if (proj_get_type(system.get()) == PJ_TYPE_VERTICAL_CRS) {
        parts.vertical = codeOfObject(system.get());
    } else {
        parts.horizontal.reset(proj_clone(projContext(), system.get()));
    }
    if (parts.horizontal)
        parts.datum = datumOf(parts.horizontal.get());
    parts.whole = std::move(system);
    return parts;
}

SystemParts loadSystemParts(std::wstring_view code)
{
    const std::wstring subject(code);
    const auto loaded = loadFromCatalog(subject.c_str(), DefinitionType::coordinateReferenceSystem);
    if (!loaded && loaded.error().status == statusNotFound)
        throwOperationError(OperationError::unknownSystem, subject, "the catalog has no such code");
    if (!loaded)
        throwOperationError(OperationError::catalogUnavailable, subject, unreadableCatalogMessage(loaded.error()));
    requireOnEarth(*loaded);
    return splitSystem(catalogObject(*splitCode(loaded->codeUtf8), PJ_CATEGORY_CRS));
}

SystemParts systemParts(const CoordinateReferenceSystemDefinition& system)
{
    const DefinitionData& data = system.data();
    requireOnEarth(data);
    const auto known = loadFromCatalog(data.code.c_str(), DefinitionType::coordinateReferenceSystem);
    if (known && known->projjson() == data.projjson())
        return loadSystemParts(data.code);
    ProjObject object = projObjectFrom(data.projjson());
    if (!object)
        throwOperationError(OperationError::unknownSystem, data.code, "PROJ cannot make the system of its definition");
    return splitSystem(std::move(object));
}

SystemAxes systemAxes(const SystemParts& system)
{
    SystemAxes axes{readUnits(system.horizontal.get()), isNorthingFirst(system.horizontal.get())};
    if (const auto code = splitCode(system.vertical)) {
        const ProjObject vertical = catalogObject(*code, PJ_CATEGORY_CRS);
        for (const AxisUnit& unit : vertical ? readUnits(vertical.get()) : std::vector<AxisUnit>())
            axes.units.push_back(unit);
    }
    constexpr std::size_t kAxes = 3;
    axes.units.resize(kAxes);
    return axes;
}

std::string describeObject(const PJ* object)
{
    const std::string code = codeOfObject(object);
    const std::string name = proj_get_name(object);
    return code.empty() ? name : code + " (" + name + ")";
}

bool isSameDatum(const PJ* left, const PJ* right)
{
    if (!left || !right)
        return false;
    requireReadableAliases();
    const std::string code = codeOfObject(left);
    return (!code.empty() && code == codeOfObject(right)) ||
           proj_is_equivalent_to_with_ctx(projContext(), left, right, PJ_COMP_EQUIVALENT);
}

} // namespace Embedded
