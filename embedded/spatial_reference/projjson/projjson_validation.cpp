#include "embedded/spatial_reference/projjson/projjson_validation.h"

#include <algorithm>
#include <cmath>

#include "embedded/spatial_reference/projjson/canonical_projjson.h"
#include "platform/spatial_reference/definition.h"

namespace Embedded {
namespace {

using namespace Zentara::Infrastructure::SpatialReference;

bool hasName(const Projjson& node)
{
    return !textOf(node, "name").empty();
}

/// A code is a text or a number. A node may have one identifier, several or none.
bool hasSoundIdentifier(const Projjson& node)
{
    const auto isSound = [](const Projjson& id) {
        const Projjson* code = memberOf(id, "code");
        return !textOf(id, "authority").empty() && code && (code->is_string() || code->is_number());
    };
    if (const Projjson* id = memberOf(node, "id"); id && !isSound(*id))
        return false;
    const Projjson* ids = memberOf(node, "ids");
    return !ids || (ids->is_array() && std::ranges::all_of(*ids, isSound));
}

bool isNamed(const Projjson* node)
{
    return node && hasName(*node) && hasSoundIdentifier(*node);
}

bool isEllipsoid(const Projjson* node)
{
    if (!isNamed(node))
        return false;
    const double axis = semiMajorAxisInMetres(*node);
    return axis > 0 && std::isfinite(axis) && std::isfinite(inverseFlattening(*node));
}

bool isGeodeticDatum(const Projjson* node)
{
    return isNamed(node) && isEllipsoid(memberOf(*node, "ellipsoid"));
}

/// PROJ adds a datum without a name to a local system of WKT 1 that has none.
bool isEngineeringDatum(const Projjson* node)
{
    return node && node->is_object() && hasSoundIdentifier(*node);
}

bool hasAxes(const Projjson& system)
{
    const Projjson* axes = memberOf(system, "coordinate_system");
    const Projjson* list = axes ? memberOf(*axes, "axis") : nullptr;
    return axes && !textOf(*axes, "subtype").empty() && list && list->is_array() && !list->empty();
}

bool isSystem(const Projjson& node);

bool isCompound(const Projjson& node)
{
    const Projjson* components = memberOf(node, "components");
    return isNamed(&node) && components && components->is_array() && components->size() >= 2 &&
           std::ranges::all_of(*components, [](const Projjson& part) { return part.is_object(); }) &&
           isSystem(components->front());
}

bool isBound(const Projjson& node)
{
    const Projjson* source = memberOf(node, "source_crs");
    const Projjson* target = memberOf(node, "target_crs");
    const Projjson* transformation = memberOf(node, "transformation");
    return source && isSystem(*source) && target && target->is_object() && transformation &&
           transformation->is_object() && hasSoundIdentifier(node);
}

bool isDerived(const Projjson& node)
{
    const Projjson* base = memberOf(node, "base_crs");
    const Projjson* conversion = memberOf(node, "conversion");
    return base && isSystem(*base) && conversion && conversion->is_object();
}

/// A projected or derived system has its datum in its base.
bool isSingle(std::string_view type, const Projjson& node)
{
    if (!isNamed(&node))
        return false;
    if (type == "ProjectedCRS" || type.starts_with("Derived"))
        return hasAxes(node) && isDerived(node);
    if (memberOf(node, "base_crs"))
        return false;
    if (type == "EngineeringCRS")
        return hasAxes(node) && isEngineeringDatum(memberOf(node, "datum"));
    return hasAxes(node) && isGeodeticDatum(memberOf(node, "datum"));
}

bool isSystem(const Projjson& node)
{
    if (!node.is_object() || !systemKind(node))
        return false;
    const auto type = systemType(node);
    if (type == "CompoundCRS")
        return isCompound(node);
    if (type == "BoundCRS")
        return isBound(node);
    return !memberOf(node, "components") && !memberOf(node, "source_crs") && isSingle(type, node);
}

bool isExpected(PJ_TYPE type, DefinitionType expected, const PJ* object)
{
    switch (expected) {
    case DefinitionType::coordinateReferenceSystem:
        return proj_is_crs(object) != 0;
    case DefinitionType::datum:
        return type == PJ_TYPE_GEODETIC_REFERENCE_FRAME || type == PJ_TYPE_DYNAMIC_GEODETIC_REFERENCE_FRAME;
    case DefinitionType::ellipsoid:
        return type == PJ_TYPE_ELLIPSOID;
    default:
        return false;
    }
}

bool isShallow(const Projjson& node, int levels)
{
    return levels > 0 && (!node.is_structured() || std::ranges::all_of(node, [levels](const Projjson& child) {
               return isShallow(child, levels - 1);
           }));
}

} // namespace

bool hasRequiredParts(DefinitionType type, const Projjson& projjson)
{
    const auto typeName = textOf(projjson, "type");
    if (!isShallow(projjson, kDeepestProjjson))
        return false;
    switch (type) {
    case DefinitionType::coordinateReferenceSystem:
        return !typeName.empty() && isSystem(projjson);
    case DefinitionType::datum:
        return typeName.ends_with("GeodeticReferenceFrame") && isGeodeticDatum(&projjson);
    case DefinitionType::ellipsoid:
        return typeName == "Ellipsoid" && isEllipsoid(&projjson);
    default:
        return false;
    }
}

bool isValidProjjson(DefinitionType type, const Projjson& projjson)
{
    if (!hasRequiredParts(type, projjson))
        return false;
    const ProjObject object = projObjectFrom(projjson);
    return object && isExpected(proj_get_type(object.get()), type, object.get());
}

} // namespace Embedded
