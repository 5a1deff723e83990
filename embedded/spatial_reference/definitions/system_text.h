// A coordinate reference system as text for other programs. The module does not need it.
#pragma once

#include <string>

#include "embedded/base/error.h"
#include "platform/export.h"
#include "platform/spatial_reference/definition.h"

namespace Embedded {

enum class SystemTextFormat {
    wkt2,      // ISO 19162:2019
    wkt1,      // as GDAL writes it
    esri,      // WKT 1 as ESRI writes it, which has no order of axes
    projjson,  // PROJJSON
    projString // a PROJ string, which has no order of axes
};

/// The system in the format, on one line. PROJ reads it back as an equivalent system. The order of axes counts only
/// where the format can say it; in the other formats an easting or a longitude always comes first. The Error has
/// statusUnsupported and names what the format cannot say.
ZSR_API Expected<std::string>
writeSystemText(const Zentara::Infrastructure::SpatialReference::CoordinateReferenceSystemDefinition& system,
                SystemTextFormat format);

/// Returns whether PROJ takes the two for the same system; names and identifiers aside.
ZSR_API bool isEquivalent(const Zentara::Infrastructure::SpatialReference::CoordinateReferenceSystemDefinition& left,
                          const Zentara::Infrastructure::SpatialReference::CoordinateReferenceSystemDefinition& right);

} // namespace Embedded
