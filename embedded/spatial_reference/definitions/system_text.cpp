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

constexpr const char* kHeights = "its heights";
constexpr const char* kTransformation = "its transformation to another system";

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

/// The system without ESRI's prefix of names of datums; null where the name has none. PROJ compares the names, and
/// removes the prefix itself from those that its database has.
ProjObject withoutDatumPrefix(const PJ* system)
{
    constexpr std::string_view kPrefix = "D_";
    Projjson projjson = canonicalProjjson(system);
    Projjson& geodetic = geodeticSystem(projjson);
    const Projjson* const datum = memberOf(geodetic, "datum");
    if (!datum || !textOf(*datum, "name").starts_with(kPrefix))
        return nullptr;
    geodetic["datum"]["name"] = textOf(*datum, "name").substr(kPrefix.size());
    return projObjectFrom(projjson);
}

bool saysTheSame(const PJ* system, const PJ* written, SystemTextFormat format)
{
    if (isEquivalent(system, written))
        return true;
    if (hasOrderOfAxes(format))
        return false;
    const ProjObject usual = withUsualAxes(system);
    if (isEquivalent(usual.get(), withUsualAxes(written).get()))
        return true;
    const ProjObject unprefixed = format == SystemTextFormat::esri ? withoutDatumPrefix(written) : nullptr;
    return unprefixed && isEquivalent(usual.get(), withUsualAxes(unprefixed.get()).get());
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

/// Why a system has no text at all in a format.
std::string describeUnwritable(const PJ* system, const Projjson& projjson)
{
    if (systemType(projjson).starts_with("Derived"))
        return "a derived system";
    switch (proj_get_type(system)) {
    case PJ_TYPE_GEOCENTRIC_CRS:
        return "a geocentric system";
    case PJ_TYPE_BOUND_CRS:
        return kTransformation;
    case PJ_TYPE_ENGINEERING_CRS:
        return "a system that is not referenced to the Earth";
    default:
        return countAxes(system) > 2 ? kHeights : "it";
    }
}

/// What got lost between the system and what was written of it.
std::string describeLoss(const PJ* system, const PJ* written)
{
    if (proj_get_type(system) == PJ_TYPE_BOUND_CRS && proj_get_type(written) != PJ_TYPE_BOUND_CRS)
        return kTransformation;
    if (proj_get_type(system) == PJ_TYPE_COMPOUND_CRS && proj_get_type(written) != PJ_TYPE_COMPOUND_CRS)
        return kHeights;
    const ProjObject datum = datumPart(system);
    if (datum && !isEquivalent(datum.get(), datumPart(written).get()))
        return "its datum " + nameOfObject(datum.get());
    if (countAxes(system) != countAxes(written))
        return kHeights;
    const ProjObject conversion(proj_crs_get_coordoperation(projContext(), system));
    const ProjObject writtenConversion(proj_crs_get_coordoperation(projContext(), written));
    if (conversion && !isEquivalent(conversion.get(), writtenConversion.get()))
        return "its projection " + nameOfObject(conversion.get());
    return "its axes, units or prime meridian";
}

bool isRich(SystemTextFormat format)
{
    return format == SystemTextFormat::wkt2 || format == SystemTextFormat::projjson;
}

/// A part for which only the rich formats have words; empty without one. PROJ does not compare these parts. The epoch
/// of a datum with an identifier is what the identifier stands for.
std::string findRichPart(const Projjson& node)
{
    if (memberOf(node, "geoid_model") || memberOf(node, "geoid_models"))
        return "its geoid model";
    if (memberOf(node, "deformation_models"))
        return "the deformation model of its datum " + nameOf(node);
    if (memberOf(node, "frame_reference_epoch") && !hasIdentifier(node))
        return "the reference epoch of its datum " + nameOf(node);
    std::string part;
    for (auto child = node.begin(); part.empty() && child != node.end(); ++child)
        if (child->is_structured())
            part = findRichPart(*child);
    return part;
}

tl::unexpected<Error> refuse(SystemTextFormat format, const std::string& what, const std::string& reason)
{
    return failure(statusUnsupported, std::string(formatName(format)) + " cannot say " + what +
                                          (reason.empty() ? "" : " (" + reason + ")"));
}

} // namespace

Expected<std::string> writeSystemText(const CoordinateReferenceSystemDefinition& definition, SystemTextFormat format)
{
    const Projjson& projjson = definition.data().projjson();
    const ProjObject system = projObjectFrom(projjson);
    if (!system)
        return failure(statusFailed, "PROJ cannot make the system of its definition");
    forgetProjMessage();
    OptionalText text = write(system.get(), format);
    const ProjObject written(text ? proj_create(projContext(), text->c_str()) : nullptr);
    if (!written)
        return refuse(format, describeUnwritable(system.get(), projjson), lastProjMessage());
    if (!saysTheSame(system.get(), written.get(), format))
        return refuse(format, describeLoss(system.get(), written.get()), "");
    if (const std::string part = isRich(format) ? "" : findRichPart(projjson); !part.empty())
        return refuse(format, part, "");
    return *std::move(text);
}

bool isEquivalent(const CoordinateReferenceSystemDefinition& left, const CoordinateReferenceSystemDefinition& right)
{
    return isEquivalent(projObjectFrom(left.data().projjson()).get(), projObjectFrom(right.data().projjson()).get());
}

} // namespace Embedded
