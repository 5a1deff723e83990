// The module's interface: the geodetic transformation to use between two coordinate systems.
//
// A configuration is a text (docs/formats/transformation-configuration.md), stored in the drawing and for the user.
// Call every function on the host's main thread. A function reports a failure by its result only. None raises an
// exception of its own; one of an allocation or of a reactor passes through.
#pragma once

#include "coordsys/orvel_export.h"
#include "coordsys/orvel_transformation_config_item.h"
#include "coordsys/orvel_transformation_config_item_collection.h"
#include "platform/spatial_reference.h"

namespace Zentara::Gis::Orvel::CoordinateSystem {

using Infrastructure::SpatialReference::TransformationInfo;

/// Where a configuration is stored. Any other value is an unknown target.
enum class CsTransformationConfigTargetType : int {
    Drawing = 1, // the host's working database
    User = 2     // the per-user settings: a file for reading and writing, the registry for clearing
};

/// Reads a configuration.
/// On true `text` is a new host string, NUL-terminated, that the caller releases with qeutDelBuffer. On false it is a
/// shared empty text that must not be released; an unknown target leaves it unchanged.
/// Returns false when the drawing has no configuration or there is no working database; when the user has no settings
/// file or it cannot be read; for an unknown target. Text in the settings file that is not UTF-8 is read as U+FFFD.
ORVEL_API bool GetCsTransformationConfig(wchar_t*& text, CsTransformationConfigTargetType target);

/// Replaces a configuration by `text`, which must not be null, and notifies every reactor, whatever the result.
/// The drawing stores the text as it is. The settings file gets one line for each element, up to and including its
/// "</Item>"; text after the last one is not stored.
/// Returns false, and the former configuration stays, when there is no working database or the current document cannot
/// be locked for write; when the settings file cannot be opened for writing (its folder is never created); for an
/// unknown target. Returns true for a settings file that can be opened but not be written to the end.
ORVEL_API bool SetCsTransformationConfig(const wchar_t* text, CsTransformationConfigTargetType target);

/// Clears a configuration and notifies every reactor, whatever the result.
/// The drawing then has an empty text. For the user the values in the registry are deleted; the settings file is
/// unchanged and is still read. Returns false where storing fails, and for an unknown target.
ORVEL_API bool ClearCsTransformationConfig(CsTransformationConfigTargetType target);

/// Finds the transformation that is configured from one coordinate system to another: in the working drawing first,
/// then for the user. That is the first item of those two codes, ignoring case; without one, the first item of the two
/// codes exchanged whose definition can be used in reverse. Returns a new object that the caller releases with
/// Object::Destroy: the definition's name and its kind, which is 1 for a geodetic path, 2 for a geodetic transformation
/// and otherwise 0. It does not hold the direction. Returns null when nothing is configured, when a code is null, and
/// when both are the same.
ORVEL_API TransformationInfo* GetCsConfiguredTransformationInfo(const wchar_t* sourceCs, const wchar_t* targetCs);

} // namespace Zentara::Gis::Orvel::CoordinateSystem
