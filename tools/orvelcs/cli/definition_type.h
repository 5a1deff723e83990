// What a definition of the spatial-reference library is, by the name of its class.
#pragma once

#include <string>

#include "platform/spatial_reference.h"

namespace Orvelcs {

/// "CoordinateReferenceSystemDefinition", "DatumDefinition", "EllipsoidDefinition"; "DefinitionBase" for any other.
std::string definitionType(const Zentara::Infrastructure::SpatialReference::DefinitionBase& definition);

} // namespace Orvelcs
