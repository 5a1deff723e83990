#include "orvelcs/cli/definition_type.h"

namespace Orvelcs {

namespace Library = Zentara::Infrastructure::SpatialReference;

std::string definitionType(const Library::DefinitionBase& definition)
{
    if (dynamic_cast<const Library::CoordinateReferenceSystemDefinition*>(&definition) != nullptr)
        return "CoordinateReferenceSystemDefinition";
    if (dynamic_cast<const Library::DatumDefinition*>(&definition) != nullptr)
        return "DatumDefinition";
    if (dynamic_cast<const Library::EllipsoidDefinition*>(&definition) != nullptr)
        return "EllipsoidDefinition";
    return "DefinitionBase";
}

} // namespace Orvelcs
