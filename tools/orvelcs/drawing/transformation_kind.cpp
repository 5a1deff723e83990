#include "orvelcs/drawing/transformation_kind.h"

#include "platform/spatial_reference/transformation.h"

namespace Orvelcs {

namespace Library = Zentara::Infrastructure::SpatialReference;

std::string transformationKindName(int kind)
{
    switch (kind) {
    case Library::transformationPath:
        return "path";
    case Library::transformationSingle:
        return "transformation";
    default:
        return "neither path nor transformation";
    }
}

} // namespace Orvelcs
