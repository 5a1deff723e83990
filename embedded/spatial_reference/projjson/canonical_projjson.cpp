#include "embedded/spatial_reference/projjson/canonical_projjson.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>

#include "embedded/base/degrees.h"
#include "embedded/base/json/json_builder.h"
#include "embedded/base/parse_number.h"
#include "embedded/spatial_reference/projjson/proj_object.h"

namespace Embedded {
namespace {

constexpr std::array<std::string_view, 8> kUsageKeys{"$schema",         "scope",           "area",   "bbox", "usages",
                                                     "vertical_extent", "temporal_extent", "remarks"};

/// Leaves them out at every level, since a base system may have remarks of its own.
class BuilderWithoutUsage final : public JsonBuilder {
public:
    bool key(string_t& name) override
    {
        if (isLeftOut() || std::ranges::find(kUsageKeys, std::string_view(name)) == kUsageKeys.end())
            return JsonBuilder::key(name);
        leaveNextOut();
        return true;
    }
};

Projjson exportProjjson(const PJ* object)
{
    const char* const options[] = {"MULTILINE=NO", nullptr};
    const char* text = proj_as_projjson(projContext(), object, options);
    BuilderWithoutUsage builder;
    const bool isRead = text && Projjson::sax_parse(text, &builder);
    Projjson projjson = isRead ? builder.take() : Projjson();
    return projjson.is_object() ? projjson : Projjson::object();
}

/// Codes are numbers where they look like one, as in PROJ's own PROJJSON.
Projjson identifier(const char* authority, const char* code)
{
    const auto number = parseInteger<int>(code);
    const bool isNumber = number && std::to_string(*number) == code;
    return {{"authority", authority}, {"code", isNumber ? Projjson(*number) : Projjson(code)}};
}

/// Replaces the identifier of the PROJJSON, in which PROJ cuts a code such as "106011_Paris" to its leading number.
void setIdentifier(const PJ* object, Projjson& node)
{
    const char* authority = proj_get_id_auth_name(object, 0);
    const char* code = proj_get_id_code(object, 0);
    if (authority && code && !node.contains("ids"))
        node["id"] = identifier(authority, code);
}

/// Returns whether the numbers are equal in the fifteen digits of PROJJSON.
bool isRounded(double number, double exact)
{
    return std::abs(number - exact) <= 1e-13 * std::abs(exact);
}

/// Replaces a number that was rounded to the digits of PROJJSON.
void restoreDigits(Projjson& number, double exact)
{
    if (number.is_number() && isRounded(number.get<double>(), exact) && number.get<double>() != exact)
        number = exact;
}

/// A unit of which PROJJSON has only the name.
struct NamedUnit {
    const char* name;
    const char* type;
    double factor;
};
constexpr NamedUnit kMetre{"metre", "LinearUnit", 1.0};
constexpr NamedUnit kDegree{"degree", "AngularUnit", kRadiansPerDegree};
constexpr NamedUnit kUnity{"unity", "ScaleUnit", 1.0};

Projjson spelledOut(const NamedUnit& unit, double factor)
{
    return {{"type", unit.type}, {"name", unit.name}, {"conversion_factor", factor}};
}

/// Spells a unit out that has the name of a known one and another factor. PROJ writes only its name.
void spellOutOtherFactor(Projjson& unit, double factor)
{
    for (const NamedUnit& known : {kMetre, kDegree, kUnity}) {
        if (unit == known.name && !isRounded(factor, known.factor)) {
            unit = spelledOut(known, factor);
            return;
        }
    }
}

/// Adds the digits of the factor and the identifier to a unit that is spelled out.
void completeUnit(Projjson& unit, double factor, const char* authority, const char* code)
{
    spellOutOtherFactor(unit, factor);
    if (!unit.is_object())
        return;
    restoreDigits(unit["conversion_factor"], factor);
    if (authority && code && *authority && *code)
        unit["id"] = identifier(authority, code);
}

void completeAxes(const PJ* system, Projjson& node)
{
    const ProjObject axes(proj_crs_get_coordinate_system(projContext(), system));
    const auto found = node.find("coordinate_system");
    if (!axes || found == node.end() || !found->contains("axis"))
        return;
    int index = 0;
    for (Projjson& axis : (*found)["axis"]) {
        double factor = 0;
        const char* authority = nullptr;
        const char* code = nullptr;
        if (proj_cs_get_axis_info(projContext(), axes.get(), index++, nullptr, nullptr, nullptr, &factor, nullptr,
                                  &authority, &code) &&
            axis.contains("unit"))
            completeUnit(axis["unit"], factor, authority, code);
    }
}

void completeParameter(const PJ* operation, int index, Projjson& parameter)
{
    double value = 0;
    double factor = 0;
    const char* authority = nullptr;
    const char* code = nullptr;
    if (!proj_coordoperation_get_param(projContext(), operation, index, nullptr, nullptr, nullptr, &value, nullptr,
                                       &factor, nullptr, &authority, &code, nullptr))
        return;
    if (parameter.contains("value"))
        restoreDigits(parameter["value"], value);
    if (parameter.contains("unit"))
        completeUnit(parameter["unit"], factor, authority, code);
}

void completeParameters(const PJ* operation, Projjson& node)
{
    if (!operation || !node.contains("parameters"))
        return;
    int index = 0;
    for (Projjson& parameter : node["parameters"])
        completeParameter(operation, index++, parameter);
}

void completeOperation(const PJ* system, Projjson& node)
{
    const ProjObject operation(proj_crs_get_coordoperation(projContext(), system));
    for (const char* key : {"conversion", "transformation"}) {
        if (node.contains(key))
            completeParameters(operation.get(), node[key]);
    }
}

/// The factor with which PROJ made the product. PROJ has no call that returns it.
double exactFactor(double product, double value)
{
    const double quotient = product / value;
    for (const double factor : {quotient, std::nextafter(quotient, 0.0), std::nextafter(quotient, 1.0)}) {
        if (factor * value == product)
            return factor;
    }
    return quotient;
}

void restoreLength(Projjson& length, double metres)
{
    if (length.is_number() && isRounded(length.get<double>(), metres)) {
        restoreDigits(length, metres);
    } else if (length.is_number()) { // in a unit that has the name of the metre and another length
        const double factor = exactFactor(metres, length.get<double>());
        length = {{"value", length}, {"unit", spelledOut(kMetre, factor)}};
    }
    if (length.is_object() && length.contains("value") && length.contains("unit") && length["unit"].is_object())
        restoreDigits(length["unit"]["conversion_factor"], exactFactor(metres, length["value"].get<double>()));
}

/// The node is an ellipsoid as PROJ writes it, alone or as part of a datum.
void completeEllipsoid(const PJ* ellipsoid, Projjson& projjson)
{
    double major = 0;
    double minor = 0;
    int isMinorComputed = 0;
    double inverse = 0;
    if (proj_ellipsoid_get_parameters(projContext(), ellipsoid, &major, &minor, &isMinorComputed, &inverse)) {
        for (const auto& [key, metres] :
             {std::pair("semi_major_axis", major), std::pair("radius", major), std::pair("semi_minor_axis", minor)}) {
            if (projjson.contains(key))
                restoreLength(projjson[key], metres);
        }
        if (projjson.contains("inverse_flattening"))
            restoreDigits(projjson["inverse_flattening"], inverse);
    }
    setIdentifier(ellipsoid, projjson);
}

Projjson ellipsoidProjjson(const PJ* ellipsoid)
{
    Projjson projjson = exportProjjson(ellipsoid);
    completeEllipsoid(ellipsoid, projjson);
    return projjson;
}

bool isGreenwich(const PJ* meridian)
{
    return std::string_view(proj_get_name(meridian)) == "Greenwich" && codeOfObject(meridian) == "EPSG:8901";
}

/// The node is a meridian as PROJ writes it, alone or as part of a datum.
void completeMeridian(const PJ* meridian, Projjson& projjson)
{
    double longitude = 0;
    double factor = 0;
    Projjson& place = projjson["longitude"];
    if (proj_prime_meridian_get_parameters(projContext(), meridian, &longitude, &factor, nullptr)) {
        if (place.is_number() && !isRounded(factor, kDegree.factor))
            place = {{"value", place}, {"unit", kDegree.name}};
        if (place.is_object()) {
            restoreDigits(place["value"], longitude);
            completeUnit(place["unit"], factor, nullptr, nullptr);
        }
    }
    setIdentifier(meridian, projjson);
}

/// A datum without a meridian has that of Greenwich, which PROJ also leaves out under another code.
void completeMeridianOf(const PJ* meridian, Projjson& datum)
{
    if (isGreenwich(meridian)) {
        datum.erase("prime_meridian");
        return;
    }
    Projjson& node = datum["prime_meridian"];
    if (node.is_null())
        node = exportProjjson(meridian);
    node.erase("type");
    completeMeridian(meridian, node);
}

/// The node is a datum as PROJ writes it, alone or as part of a system. What it says of its ellipsoid and its meridian
/// is what PROJ writes of these alone, apart from their identifiers.
void completeDatum(const PJ* datum, Projjson& node)
{
    if (const ProjObject ellipsoid{proj_get_ellipsoid(projContext(), datum)})
        completeEllipsoid(ellipsoid.get(), node["ellipsoid"]);
    const ProjObject meridian(proj_get_prime_meridian(projContext(), datum));
    setIdentifier(datum, node);
    if (meridian)
        completeMeridianOf(meridian.get(), node);
}

Projjson datumProjjson(const PJ* datum)
{
    Projjson projjson = exportProjjson(datum);
    completeDatum(datum, projjson);
    return projjson;
}

/// The datum of an ensemble, under the code of the ensemble.
Projjson datumOfEnsemble(const PJ* datum, const Projjson& ensemble)
{
    Projjson projjson = datumProjjson(datum);
    if (!hasIdentifier(projjson) && ensemble.contains("id"))
        projjson["id"] = ensemble["id"];
    return projjson;
}

/// Completes the datum, and puts the datum of an ensemble in the place of the ensemble.
void completeDatumOf(const PJ* system, Projjson& node)
{
    const ProjObject datum(proj_crs_get_datum_forced(projContext(), system));
    if (!datum)
        return;
    if (const auto own = node.find("datum"); own != node.end())
        completeDatum(datum.get(), *own);
    if (!node.contains("datum_ensemble"))
        return;
    Projjson completed = Projjson::object();
    for (auto& [key, value] : node.items()) {
        const bool isEnsemble = key == "datum_ensemble";
        completed[isEnsemble ? "datum" : key] = isEnsemble ? datumOfEnsemble(datum.get(), value) : std::move(value);
    }
    node = std::move(completed);
}

void completeSystem(const PJ* system, Projjson& node);

void completePart(ProjObject system, Projjson& node, const char* key)
{
    if (system && node.contains(key)) {
        completeSystem(system.get(), node[key]);
        setIdentifier(system.get(), node[key]);
    }
}

void completeComponents(const PJ* system, Projjson& node)
{
    int index = 0;
    for (Projjson& component : node["components"]) {
        const ProjObject part(proj_crs_get_sub_crs(projContext(), system, index++));
        if (!part)
            continue;
        completeSystem(part.get(), component);
        setIdentifier(part.get(), component);
    }
}

void completeSystem(const PJ* system, Projjson& node)
{
    if (node.contains("components"))
        return completeComponents(system, node);
    completePart(ProjObject(proj_get_source_crs(projContext(), system)), node,
                 node.contains("source_crs") ? "source_crs" : "base_crs");
    completePart(ProjObject(proj_get_target_crs(projContext(), system)), node, "target_crs");
    completeOperation(system, node);
    completeAxes(system, node);
    if (node.contains("datum") || node.contains("datum_ensemble"))
        completeDatumOf(system, node);
}

bool isUnitWithIdentifier(const Projjson& node)
{
    return node.is_object() && node.contains("conversion_factor") && node.contains("id");
}

bool hasUnitWithIdentifier(const Projjson& node)
{
    return isUnitWithIdentifier(node) || (node.is_structured() && std::ranges::any_of(node, hasUnitWithIdentifier));
}

/// Copies the members of a unit's "id" into the unit itself, where PROJ reads the identifier.
void exposeUnitIdentifiers(Projjson& node)
{
    if (isUnitWithIdentifier(node)) {
        const Projjson id = node["id"];
        node.update(id);
    }
    if (node.is_structured()) {
        for (Projjson& child : node)
            exposeUnitIdentifiers(child);
    }
}

} // namespace

Projjson canonicalProjjson(const PJ* object)
{
    if (proj_get_type(object) == PJ_TYPE_ELLIPSOID)
        return ellipsoidProjjson(object);
    if (!proj_is_crs(object))
        return datumProjjson(object);
    Projjson projjson = exportProjjson(object);
    completeSystem(object, projjson);
    setIdentifier(object, projjson);
    return projjson;
}

ProjObject projObjectFrom(const Projjson& projjson)
{
    if (!hasUnitWithIdentifier(projjson))
        return ProjObject(proj_create(projContext(), projjson.dump().c_str()));
    Projjson readable = projjson;
    exposeUnitIdentifiers(readable);
    return ProjObject(proj_create(projContext(), readable.dump().c_str()));
}

} // namespace Embedded
