#include "embedded/diagnostics/resource_counters.h"
#include "platform/spatial_reference/status.h"

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
