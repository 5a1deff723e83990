#include "embedded/spatial_reference/projjson/projjson.h"

#include "embedded/base/case_folding.h"
#include "embedded/spatial_reference/projjson/catalog_code.h"

namespace Embedded {
namespace {

using namespace Zentara::Infrastructure::SpatialReference;

std::optional<CoordinateReferenceSystemKind> singleSystemKind(std::string_view type, const Projjson& system)
{
    if (type == "GeographicCRS" || type == "DerivedGeographicCRS")
        return kindGeographic;
    if (type == "ProjectedCRS" || type == "DerivedProjectedCRS")
        return kindProjected;
    if (type == "EngineeringCRS" || type == "DerivedEngineeringCRS")
        return kindNotEarthReferenced;
    if (type != "GeodeticCRS" && type != "DerivedGeodeticCRS")
        return std::nullopt;
    const Projjson* axes = memberOf(system, "coordinate_system");
    return axes && textOf(*axes, "subtype") == "Cartesian" ? kindGeocentric : kindGeographic;
}

/// A length is a number of metres, or an object with a value and a unit.
double lengthInMetres(const Projjson& length)
{
    if (length.is_number())
        return length.get<double>();
    const Projjson* value = memberOf(length, "value");
    const Projjson* unit = memberOf(length, "unit");
    const Projjson* factor = unit ? memberOf(*unit, "conversion_factor") : nullptr;
    if (!value || !value->is_number())
        return 0;
    return value->get<double>() * (factor && factor->is_number() ? factor->get<double>() : 1.0);
}

std::string textOfNumberOrString(const Projjson& value)
{
    return value.is_string() ? value.get<std::string>() : value.dump();
}

} // namespace

const Projjson* memberOf(const Projjson& node, const char* key)
{
    if (!node.is_object())
        return nullptr;
    const auto found = node.find(key);
    return found == node.end() ? nullptr : &*found;
}

std::string_view textOf(const Projjson& node, const char* key)
{
    const Projjson* member = memberOf(node, key);
    return member && member->is_string() ? std::string_view(member->get_ref<const std::string&>()) : std::string_view();
}

std::string_view systemType(const Projjson& system)
{
    const auto type = textOf(system, "type");
    return type.empty() ? "GeographicCRS" : type;
}

const Projjson* underlyingSystem(const Projjson& system)
{
    if (const Projjson* components = memberOf(system, "components"))
        return components->is_array() && !components->empty() ? &components->front() : nullptr;
    if (const Projjson* source = memberOf(system, "source_crs"))
        return source;
    return memberOf(system, "base_crs");
}

std::optional<CoordinateReferenceSystemKind> systemKind(const Projjson& system)
{
    const auto type = systemType(system);
    if (type != "CompoundCRS" && type != "BoundCRS")
        return singleSystemKind(type, system);
    const Projjson* horizontal = underlyingSystem(system);
    return horizontal ? systemKind(*horizontal) : std::nullopt;
}

const Projjson& geodeticSystem(const Projjson& system)
{
    const Projjson* node = &system;
    while (const Projjson* underlying = underlyingSystem(*node))
        node = underlying;
    return *node;
}

Projjson& geodeticSystem(Projjson& system)
{
    return const_cast<Projjson&>(geodeticSystem(std::as_const(system)));
}

bool hasIdentifier(const Projjson& node)
{
    return memberOf(node, "id") || memberOf(node, "ids");
}

std::string codeOf(const Projjson& node)
{
    const Projjson* identifier = memberOf(node, "id");
    if (const Projjson* several = memberOf(node, "ids"); !identifier && several && several->is_array())
        identifier = several->empty() ? nullptr : &several->front();
    const Projjson* code = identifier ? memberOf(*identifier, "code") : nullptr;
    if (!code)
        return nameOf(node);
    return CatalogCode{std::string(textOf(*identifier, "authority")), textOfNumberOrString(*code)}.text();
}

std::string nameOf(const Projjson& node)
{
    if (memberOf(node, "name") || !memberOf(node, "source_crs"))
        return std::string(textOf(node, "name"));
    return nameOf(node["source_crs"]);
}

bool isUnspecifiedDatum(const Projjson& datum)
{
    const auto name = textOf(datum, "name");
    return name.starts_with("Not specified (based on ") || name.starts_with("Unknown based on ") ||
           equalsIgnoringAsciiCase(name, "unknown");
}

double semiMajorAxisInMetres(const Projjson& ellipsoid)
{
    const Projjson* axis = memberOf(ellipsoid, "semi_major_axis");
    if (!axis)
        axis = memberOf(ellipsoid, "radius");
    return axis ? lengthInMetres(*axis) : 0;
}

double inverseFlattening(const Projjson& ellipsoid)
{
    if (const Projjson* inverse = memberOf(ellipsoid, "inverse_flattening"); inverse && inverse->is_number())
        return inverse->get<double>();
    const Projjson* minor = memberOf(ellipsoid, "semi_minor_axis");
    const double major = semiMajorAxisInMetres(ellipsoid);
    const double difference = minor ? major - lengthInMetres(*minor) : 0;
    return difference == 0 ? 0 : major / difference;
}

} // namespace Embedded
