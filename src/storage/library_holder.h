// The holder for what the spatial-reference library hands out.
#pragma once

#include "platform/spatial_reference.h"
#include "storage/holder.h"

namespace Orvel {

namespace Library = Zentara::Infrastructure::SpatialReference;

template <class T>
struct LibraryObjectPolicy {
    using Handle = T*;
    static void dispose(T* object) { Library::Object::Destroy(object); }
};
template <class T>
using LibraryObject = Holder<LibraryObjectPolicy<T>>;

} // namespace Orvel
