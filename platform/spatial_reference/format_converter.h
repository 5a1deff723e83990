// Definitions as well-known text.
#pragma once

#include <cstddef>

#include "definition.h"

namespace Zentara::Infrastructure::SpatialReference {

enum WktFlavor : int { wktFlavorDefault = 0 };

class ZSR_API FormatConverter {
public:
    /// Writes the system as WKT 1 into the buffer, NUL-terminated. What WKT 1 cannot say is written as WKT 2 with
    /// statusInexact, in its simplified form where the full one does not fit. statusBufferTooSmall when neither fits;
    /// then, as for every other failure, the buffer is left as it was.
    static Status DefinitionToWkt_s(const CoordinateReferenceSystemDefinition* definition, WktFlavor flavor,
                                    wchar_t* buffer, std::size_t bufferCharacters);
};

} // namespace Zentara::Infrastructure::SpatialReference
