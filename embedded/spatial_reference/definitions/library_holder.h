// Owns a library object until it is handed on.
#pragma once

#include <memory>

#include "platform/spatial_reference/status.h"

namespace Embedded {

struct LibraryRelease {
    void operator()(const Zentara::Infrastructure::SpatialReference::Object* object) const
    {
        Zentara::Infrastructure::SpatialReference::Object::Destroy(object);
    }
};

template <typename Object>
using LibraryHolder = std::unique_ptr<Object, LibraryRelease>;

} // namespace Embedded
