#include "embedded/spatial_reference/projjson/projjson_check.h"

#include <algorithm>
#include <cmath>

#include "embedded/spatial_reference/projjson/canonical_projjson.h"
#include "platform/spatial_reference/definition.h"

namespace Embedded {
namespace {

using namespace Zentara::Infrastructure::SpatialReference;

bool hasName(const Document& node)
{
    return !textOf(node, "name").empty();
}

/// A code is text or number; several identifiers are as good as one.
bool hasSoundIdentifier(const Document& node)
{
    const auto isSound = [](const Document& id) {
        const Document* code = memberOf(id, "code");
        return !textOf(id, "authority").empty() && code && (code->is_string() || code->is_number());
    };
    if (const Document* id = memberOf(node, "id"); id && !isSound(*id))
        return false;
    const Document* ids = memberOf(node, "ids");
    return !ids || (ids->is_array() && std::ranges::all_of(*ids, isSound));
}

bool isNamed(const Document* node)
{
    return node && hasName(*node) && hasSoundIdentifier(*node);
}

bool isEllipsoid(const Document* node)
{
    if (!isNamed(node))
        return false;
    const double axis = semiMajorAxisInMetres(*node);
    return axis > 0 && std::isfinite(axis) && std::isfinite(inverseFlattening(*node));
}

bool isGeodeticDatum(const Document* node)
{
    return isNamed(node) && isEllipsoid(memberOf(*node, "ellipsoid"));
}

/// WKT 1 allows a local system without any datum; PROJ then gives it one without a name.
bool isEngineeringDatum(const Document* node)
{
    return node && node->is_object() && hasSoundIdentifier(*node);
}

bool hasAxes(const Document& system)
{
    const Document* axes = memberOf(system, "coordinate_system");
    const Document* list = axes ? memberOf(*axes, "axis") : nullptr;
    return axes && !textOf(*axes, "subtype").empty() && list && list->is_array() && !list->empty();
}

bool isSystem(const Document& node);

bool isCompound(const Document& node)
{
    const Document* components = memberOf(node, "components");
    return isNamed(&node) && components && components->is_array() && components->size() >= 2 &&
           std::ranges::all_of(*components, [](const Document& part) { return part.is_object(); }) &&
           isSystem(components->front());
}

bool isBound(const Document& node)
{
    const Document* source = memberOf(node, "source_crs");
    const Document* target = memberOf(node, "target_crs");
    const Document* transformation = memberOf(node, "transformation");
    return source && isSystem(*source) && target && target->is_object() && transformation &&
           transformation->is_object() && hasSoundIdentifier(node);
}

bool isDerived(const Document& node)
{
    const Document* base = memberOf(node, "base_crs");
    const Document* conversion = memberOf(node, "conversion");
    return base && isSystem(*base) && conversion && conversion->is_object();
}

/// The place of the datum depends on the type: a projected or derived system has it in its base.
bool isSingle(std::string_view type, const Document& node)
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

bool isSystem(const Document& node)
{
    if (!node.is_object() || kindOf(node) == 0)
        return false;
    const auto type = systemTypeOf(node);
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

bool isShallow(const Document& node, int levels)
{
    return levels > 0 && (!node.is_structured() || std::ranges::all_of(node, [levels](const Document& child) {
               return isShallow(child, levels - 1);
           }));
}

} // namespace

bool isSoundDocument(DefinitionType type, const Document& document)
{
    const auto typeName = textOf(document, "type");
    if (!isShallow(document, kDeepestDocument))
        return false;
    switch (type) {
    case DefinitionType::coordinateReferenceSystem:
        return !typeName.empty() && isSystem(document);
    case DefinitionType::datum:
        return typeName.ends_with("GeodeticReferenceFrame") && isGeodeticDatum(&document);
    case DefinitionType::ellipsoid:
        return typeName == "Ellipsoid" && isEllipsoid(&document);
    default:
        return false;
    }
}

bool isValidDocument(DefinitionType type, const Document& document)
{
    if (!isSoundDocument(type, document))
        return false;
    const ProjObject object = projObjectFrom(document);
    return object && isExpected(proj_get_type(object.get()), type, object.get());
}

} // namespace Embedded
