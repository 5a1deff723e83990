#include "embedded/diagnostics/resource_counters.h"
#include "platform/spatial_reference/status.h"

namespace Zentara::Infrastructure::SpatialReference {

using Embedded::Audit;
using Embedded::Held;

Object::Object()
{
    Audit::add(Held::libraryObject);
}

Object::~Object()
{
    Audit::remove(Held::libraryObject);
}

void Object::Destroy(const Object* object)
{
    delete object;
}

} // namespace Zentara::Infrastructure::SpatialReference
