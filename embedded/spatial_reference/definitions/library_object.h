// Objects of the library: their holder, and how they are made.
#pragma once

#include <memory>
#include <tuple>
#include <utility>

#include "embedded/spatial_reference/projjson/definition_data.h"
#include "platform/spatial_reference/status.h"

namespace Embedded {

struct LibraryRelease {
    void operator()(const Zentara::Infrastructure::SpatialReference::Object* object) const
    {
        Zentara::Infrastructure::SpatialReference::Object::Destroy(object);
    }
};

/// Owns a library object.
template <typename Object>
using LibraryHolder = std::unique_ptr<Object, LibraryRelease>;

/// A new object of the library that owns its data.
template <typename Object, typename Data>
Object* makeObject(Data data)
{
    auto owned = std::make_unique<Data>(std::move(data));
    auto* object = new Object(owned.get());
    std::ignore = owned.release(); // The object owns the data now.
    return object;
}

/// A new definition of the class that the type of the data asks for.
LibraryHolder<Zentara::Infrastructure::SpatialReference::DefinitionBase> makeDefinition(DefinitionData data);

} // namespace Embedded
