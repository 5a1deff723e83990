#include "embedded/spatial_reference/definitions/library_object.h"

#include "embedded/diagnostics/resource_counters.h"
#include "platform/spatial_reference/transformation.h"

namespace Zentara::Infrastructure::SpatialReference {

using Embedded::ResourceCounters;
using Embedded::ResourceKind;

Object::Object()
{
    ResourceCounters::add(ResourceKind::libraryObject);
}

Object::~Object()
{
    ResourceCounters::remove(ResourceKind::libraryObject);
}

void Object::Destroy(const Object* object)
{
    delete object;
}

} // namespace Zentara::Infrastructure::SpatialReference

namespace Embedded {

using namespace Zentara::Infrastructure::SpatialReference;

LibraryHolder<DefinitionBase> makeDefinition(DefinitionData data)
{
    switch (data.type) {
    case DefinitionType::coordinateReferenceSystem:
        return LibraryHolder<DefinitionBase>(makeObject<CoordinateReferenceSystemDefinition>(std::move(data)));
    case DefinitionType::datum:
        return LibraryHolder<DefinitionBase>(makeObject<DatumDefinition>(std::move(data)));
    case DefinitionType::ellipsoid:
        return LibraryHolder<DefinitionBase>(makeObject<EllipsoidDefinition>(std::move(data)));
    case DefinitionType::transformation:
        return LibraryHolder<DefinitionBase>(makeObject<GeodeticTransformationDefinition>(std::move(data)));
    case DefinitionType::path:
        return LibraryHolder<DefinitionBase>(makeObject<GeodeticPathDefinition>(std::move(data)));
    }
    return nullptr;
}

} // namespace Embedded
