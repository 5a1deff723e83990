#include "embedded/spatial_reference/operations/datum_preserving_conversion.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <string>
#include <string_view>
#include <utility>

#include "embedded/spatial_reference/operations/operation_facts.h"
#include "embedded/spatial_reference/operations/operation_search.h"
#include "embedded/spatial_reference/operations/system_parts.h"
#include "embedded/spatial_reference/projjson/proj_object.h"

namespace Embedded {
namespace {

constexpr std::string_view kLongitudeRotation = "9601"; // of EPSG

double primeMeridianInRadians(const ProjObject& system)
{
    const ProjObject meridian(system ? proj_get_prime_meridian(projContext(), system.get()) : nullptr);
    double longitude = 0;
    double unit = 0;
    if (!meridian || !proj_prime_meridian_get_parameters(projContext(), meridian.get(), &longitude, &unit, nullptr))
        return std::nan("");
    return longitude * unit;
}

bool isLongitudeRotation(const PJ* step)
{
    const char* method = nullptr;
    return proj_coordoperation_get_method_info(projContext(), step, nullptr, nullptr, &method) && method &&
           method == kLongitudeRotation;
}

/// The catalog has rotations that differ from the meridians' own longitudes by some tenths of a second of arc.
bool isChangeOfPrimeMeridian(const PJ* step)
{
    constexpr double kToleranceInRadians = 1e-10; // below a millimetre
    double offset = 0;
    double unit = 0;
    if (!isLongitudeRotation(step) ||
        !proj_coordoperation_get_param(projContext(), step, 0, nullptr, nullptr, nullptr, &offset, nullptr, &unit,
                                       nullptr, nullptr, nullptr, nullptr))
        return false;
    const double source = primeMeridianInRadians(ProjObject(proj_get_source_crs(projContext(), step)));
    const double target = primeMeridianInRadians(ProjObject(proj_get_target_crs(projContext(), step)));
    return std::abs(offset * unit - (source - target)) < kToleranceInRadians;
}

/// Between systems of one datum PROJ writes conversions also as transformations that change nothing.
bool isExact(const PJ* step)
{
    return accuracyInMetres(step) == 0.0;
}

bool changesNoDatum(const std::vector<ProjObject>& steps, bool isOneDatum)
{
    return std::ranges::all_of(steps, [&](const ProjObject& step) {
        if (isLongitudeRotation(step.get()))
            return isChangeOfPrimeMeridian(step.get());
        return isExact(step.get()) &&
               (isOneDatum || codeOfObject(step.get()).empty() || proj_get_type(step.get()) == PJ_TYPE_CONVERSION);
    });
}

ProjObject horizontalDatumOf(const PJ* system)
{
    return splitSystem(ProjObject(proj_clone(projContext(), system))).datum;
}

} // namespace

std::optional<DatumPreservingConversion> datumPreservingConversion(const PJ* from, const PJ* to)
{
    static std::set<std::pair<std::string, std::string>> withoutConversion; // codes of systems of different datums
    const std::pair codes(codeOfObject(from), codeOfObject(to));
    const bool haveCodes = !codes.first.empty() && !codes.second.empty();
    if (haveCodes && codes.first == codes.second)
        return DatumPreservingConversion{};
    if (withoutConversion.contains(codes))
        return std::nullopt;
    const bool isOneDatum = isSameDatum(horizontalDatumOf(from).get(), horizontalDatumOf(to).get());
    for (ProjObject& operation : searchOperations(from, to, OperationSearch::directOnly)) {
        const auto steps = operationSteps(operation.get());
        if (isInstantiable(operation.get()) && changesNoDatum(steps, isOneDatum))
            return DatumPreservingConversion{std::move(operation), std::ranges::any_of(steps, [](const auto& step) {
                                                 return isLongitudeRotation(step.get());
                                             })};
    }
    if (haveCodes)
        withoutConversion.insert(codes); // the search takes 10 ms where there are many operations
    return std::nullopt;
}

} // namespace Embedded
