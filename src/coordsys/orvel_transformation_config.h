// The module's interface: which geodetic transformation to use between two coordinate systems.
//
// A configuration is a text (docs/formats/transformation-configuration.md), kept in the drawing and for the user. Every
// function is for the host's main thread and tells of a failure by its result alone. None raises an exception of its
// own; one raised by an allocation or by a reactor passes through.
#pragma once

#include "coordsys/orvel_export.h"
#include "coordsys/orvel_transformation_config_item.h"
#include "coordsys/orvel_transformation_config_item_collection.h"
#include "platform/spatial_reference.h"

namespace Zentara::Gis::Orvel::CoordinateSystem {

using Infrastructure::SpatialReference::TransformationInfo;

/// Where a configuration is kept; any other value selects nothing.
enum class CsTransformationConfigTargetType : int {
    Drawing = 1, // the host's working database
    User = 2     // the per-user settings: a file for reading and writing, the registry for clearing
};

/// Reads a configuration.
/// On true `text` is a new host string, NUL-terminated, that the caller releases with qeutDelBuffer. On false it is a
/// shared empty text that must not be released; an unknown target leaves it untouched.
/// False when the drawing has no configuration or there is no working database; when the user has no settings file, or
/// it cannot be read; for an unknown target. Text in the settings file that is not UTF-8 is read as U+FFFD.
ORVEL_API bool GetCsTransformationConfig(wchar_t*& text, CsTransformationConfigTargetType target);

/// Replaces a configuration by `text`, which must not be null, and tells every reactor, whatever the result.
/// The drawing keeps the text as it is. The settings file gets a line for each element, up to and including its
/// "</Item>"; what follows the last one is not kept.
/// False when there is no working database or the current document cannot be locked for write; when the settings file
/// cannot be opened for writing (its folder is never created); for an unknown target. What was stored before then
/// stays. A settings file that could be opened but not be written to the end is answered with true.
ORVEL_API bool SetCsTransformationConfig(const wchar_t* text, CsTransformationConfigTargetType target);

/// Empties a configuration and tells every reactor, whatever the result.
/// The drawing keeps an empty text. For the user the registry's store is emptied; the settings file stays as it is and
/// goes on answering.
/// False where storing fails, and for an unknown target.
ORVEL_API bool ClearCsTransformationConfig(CsTransformationConfigTargetType target);

/// Finds what is configured from one coordinate system to another: in the working drawing first, else for the user. The
/// first item of those codes, ignoring case, answers; without one, the first of the two codes exchanged whose
/// definition can be used in reverse.
/// Returns a new object that the caller releases with Object::Destroy: the definition's name, and its kind, 1 a
/// geodetic path, 2 a geodetic transformation, else 0. It does not tell in which direction it was found. Null when
/// nothing is configured, a code is null or both are the same.
ORVEL_API TransformationInfo* GetCsConfiguredTransformationInfo(const wchar_t* sourceCs, const wchar_t* targetCs);

} // namespace Zentara::Gis::Orvel::CoordinateSystem
