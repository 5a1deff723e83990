// Definitions as well-known text.
#pragma once

#include <cstddef>

#include "definition.h"

namespace Zentara::Infrastructure::SpatialReference {

enum WktFlavor : int { wktFlavorDefault = 0 };

class ZSR_API FormatConverter {
public:
    /// Writes the system as WKT 1 into the buffer, NUL-terminated. A system that WKT 1 cannot describe is written as
    /// WKT 2 with statusInexact, in its simplified form where the full one does not fit. Returns statusBufferTooSmall
    /// when neither fits. Then, as after every other failure, the buffer is unchanged.
    static Status DefinitionToWkt_s(const CoordinateReferenceSystemDefinition* definition, WktFlavor flavor,
                                    wchar_t* buffer, std::size_t bufferCharacters);
};

} // namespace Zentara::Infrastructure::SpatialReference
