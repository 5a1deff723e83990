// The text form of definitions: PROJJSON documents in a small JSON frame, as UTF-16 little-endian with a NUL.
// See docs/formats/definition-text.md.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "embedded/spatial_reference/projjson/definition_data.h"
#include "platform/spatial_reference/status.h"

namespace Embedded {

inline constexpr int kTextFrameVersion = 1;

/// The definition, followed by its datum and its ellipsoid where they are asked for and it has them.
std::string textFrameFrom(const DefinitionData& definition, bool includeDependents);

/// What a reading came to; `definitions` counts with statusOk only.
struct TextReading {
    Zentara::Infrastructure::SpatialReference::Status status;
    std::vector<DefinitionData> definitions;
};

/// statusEmptyText, statusUnreadable, statusUnsupported for a newer frame.
TextReading definitionsFromTextFrame(std::string_view utf16le);

} // namespace Embedded
