#include "embedded/spatial_reference/definitions/system_text.h"

#include <optional>
#include <utility>

#include "embedded/spatial_reference/projjson/canonical_projjson.h"
#include "embedded/spatial_reference/projjson/definition_data.h"
#include "embedded/spatial_reference/projjson/proj_context.h"
#include "embedded/spatial_reference/projjson/proj_object.h"
#include "platform/spatial_reference/status.h"

namespace Embedded {
namespace {

using Zentara::Infrastructure::SpatialReference::CoordinateReferenceSystemDefinition;
using Zentara::Infrastructure::SpatialReference::statusFailed;
using Zentara::Infrastructure::SpatialReference::statusUnsupported;
using OptionalText = std::optional<std::string>;

OptionalText optionalText(const char* text)
{
    return text ? OptionalText(text) : std::nullopt;
}

OptionalText writeWkt(const PJ* system, PJ_WKT_TYPE type, const char* axes)
{
    const char* const options[] = {"MULTILINE=NO", axes, nullptr};
    return optionalText(proj_as_wkt(projContext(), system, type, options));
}

OptionalText write(const PJ* system, SystemTextFormat format)
{
    const char* const onOneLine[] = {"MULTILINE=NO", nullptr};
    switch (format) {
    case SystemTextFormat::wkt2:
        return writeWkt(system, PJ_WKT2_2019, nullptr);
    case SystemTextFormat::wkt1:
        return writeWkt(system, PJ_WKT1_GDAL, "OUTPUT_AXIS=YES"); // PROJ would leave out a northing before an easting
    case SystemTextFormat::esri:
        return writeWkt(system, PJ_WKT1_ESRI, nullptr);
    case SystemTextFormat::projjson:
        return optionalText(proj_as_projjson(projContext(), system, onOneLine));
    case SystemTextFormat::projString:
        return optionalText(proj_as_proj_string(projContext(), system, PJ_PROJ_4, nullptr));
    }
    return std::nullopt;
}

bool hasOrderOfAxes(SystemTextFormat format)
{
    return format != SystemTextFormat::esri && format != SystemTextFormat::projString;
}

const char* formatName(SystemTextFormat format)
{
    switch (format) {
    case SystemTextFormat::wkt2:
        return "WKT 2";
    case SystemTextFormat::wkt1:
        return "WKT 1";
    case SystemTextFormat::esri:
        return "ESRI WKT";
    case SystemTextFormat::projjson:
        return "PROJJSON";
    default:
        return "a PROJ string";
    }
}

bool isEquivalent(const PJ* left, const PJ* right)
{
    return left && right && proj_is_equivalent_to_with_ctx(projContext(), left, right, PJ_COMP_EQUIVALENT) != 0;
}

/// The system with the longitude or the easting first.
ProjObject withUsualAxes(const PJ* system)
{
    return ProjObject(proj_normalize_for_visualization(projContext(), system));
}

bool saysTheSame(const PJ* system, const PJ* written, SystemTextFormat format)
{
    if (isEquivalent(system, written))
        return true;
    return !hasOrderOfAxes(format) && isEquivalent(withUsualAxes(system).get(), withUsualAxes(written).get());
}

ProjObject geodeticPart(const PJ* system)
{
    return ProjObject(proj_crs_get_geodetic_crs(projContext(), system));
}

ProjObject datumPart(const PJ* system)
{
    const ProjObject geodetic = geodeticPart(system);
    return ProjObject(geodetic ? proj_crs_get_datum_forced(projContext(), geodetic.get()) : nullptr);
}

int countAxes(const PJ* system)
{
    const ProjObject axes(proj_crs_get_coordinate_system(projContext(), system));
    return axes ? proj_cs_get_axis_count(projContext(), axes.get()) : 0;
}

std::string nameOfObject(const PJ* object)
{
    const char* name = proj_get_name(object);
    return name ? name : "";
}

/// What got lost between the system and what was written of it.
std::string describeLoss(const PJ* system, const PJ* written)
{
    if (!written)
        return "it";
    if (proj_get_type(system) == PJ_TYPE_COMPOUND_CRS && proj_get_type(written) != PJ_TYPE_COMPOUND_CRS)
        return "its heights";
    const ProjObject datum = datumPart(system);
    if (datum && !isEquivalent(datum.get(), datumPart(written).get()))
        return "its datum " + nameOfObject(datum.get());
    if (proj_get_type(system) == PJ_TYPE_BOUND_CRS)
        return "its transformation to another system";
    if (countAxes(system) != countAxes(written))
        return "its heights";
    const ProjObject conversion(proj_crs_get_coordoperation(projContext(), system));
    const ProjObject writtenConversion(proj_crs_get_coordoperation(projContext(), written));
    if (conversion && !isEquivalent(conversion.get(), writtenConversion.get()))
        return "its projection " + nameOfObject(conversion.get());
    return "its axes, units or prime meridian";
}

tl::unexpected<Error> refuse(SystemTextFormat format, const std::string& what, const std::string& reason)
{
    const bool isRichest = format == SystemTextFormat::wkt2 || format == SystemTextFormat::projjson;
    return failure(statusUnsupported, std::string(formatName(format)) + " cannot say " + what +
                                          (reason.empty() ? "" : " (" + reason + ")") +
                                          (isRichest ? "" : "; wkt2 and projjson say more"));
}

} // namespace

Expected<std::string> writeSystemText(const CoordinateReferenceSystemDefinition& definition, SystemTextFormat format)
{
    const ProjObject system = projObjectFrom(definition.data().projjson());
    if (!system)
        return failure(statusFailed, "PROJ cannot make the system of its definition");
    forgetProjMessage();
    OptionalText text = write(system.get(), format);
    if (!text)
        return refuse(format, "it", lastProjMessage());
    const ProjObject written(proj_create(projContext(), text->c_str()));
    if (!saysTheSame(system.get(), written.get(), format))
        return refuse(format, describeLoss(system.get(), written.get()), "");
    return *std::move(text);
}

bool isEquivalent(const CoordinateReferenceSystemDefinition& left, const CoordinateReferenceSystemDefinition& right)
{
    return isEquivalent(projObjectFrom(left.data().projjson()).get(), projObjectFrom(right.data().projjson()).get());
}

} // namespace Embedded
