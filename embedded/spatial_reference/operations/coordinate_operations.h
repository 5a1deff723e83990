// Coordinate operations between two systems of the catalog, for programs in which a user chooses one. The module does
// not need it.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "embedded/base/error.h"
#include "embedded/spatial_reference/catalog/geographic_bounds.h"
#include "platform/export.h"
#include "platform/spatial_reference/definition.h"
#include "platform/spatial_reference/transformation.h"

namespace Embedded {

/// The direction in which an operation is applied: as it is defined, or from its target to its source.
enum class OperationDirection { forward, inverse };

/// A file that an operation reads.
struct OperationGrid {
    std::wstring name;
    bool isInstalled = false;
    std::wstring url;     // empty where none is known
    std::wstring package; // of PROJ's, that has it; empty where none is known
    std::wstring file;    // under which it is installed, often with an older name; empty where it is not
};

/// A transformation or path of the catalog, as it is used between two systems.
struct CatalogOperation {
    std::wstring code{}; // AUTHORITY:CODE; empty for a composition of PROJ's own
    std::wstring name;
    Zentara::Infrastructure::SpatialReference::TransformationKind kind =
        Zentara::Infrastructure::SpatialReference::transformationSingle;
    std::optional<double> accuracyInMetres;
    std::wstring areaOfUse{};
    std::optional<GeographicBounds> bounds{}; // of the area of use
    OperationDirection direction = OperationDirection::forward;
    bool isReversible = false;
    bool isImplemented = true; // whether PROJ knows the method in this direction; true where a grid is missing
    std::vector<OperationGrid> grids;
    bool isBallpark = false; // whether it treats different datums as equal, as none of the catalog's does

    ZSR_API bool hasAllGrids() const;
    /// Returns whether the operation can transform coordinates here: it has this direction, its method and all of its
    /// grids.
    ZSR_API bool isUsable() const;
};

/// The status of an Error about coordinate operations. Its place is the code or name that it is about.
enum class OperationError {
    catalogUnavailable = 1,
    unknownSystem,
    notEarthReferenced, // a plane system that lies nowhere on the Earth
    noOperation,        // PROJ knows no way between the systems
    unknownOperation,
    ambiguousOperation, // a name that several have; the message has their codes
    doesNotFit,         // it does not connect the systems, or its kind is neither path nor transformation
    notReversible,      // it would have to be applied inversely and must not be
    missingGrid,
    notImplemented
};

inline OperationError operationErrorOf(const Error& error)
{
    return static_cast<OperationError>(error.status);
}

/// The transformations and paths of the catalog from the datum of the source to the datum of the target, or back, that
/// change heights as the two systems need it. Leaves out deprecated ones and PROJ's own compositions, which have no
/// code by which they could be configured. The Error has the status of an OperationError.
///
/// The best come first. Usable ones precede those that lack a grid, would have to be reversed and are not reversible,
/// or have a method that PROJ does not implement. Then PROJ's order decides: the larger area of use, then the better
/// accuracy. Those that PROJ itself would not offer come last, by accuracy and code.
ZSR_API Expected<std::vector<CatalogOperation>> operationsBetween(std::wstring_view sourceCode,
                                                                  std::wstring_view targetCode);

/// The same between two definitions, which the catalog need not have.
ZSR_API Expected<std::vector<CatalogOperation>>
operationsBetween(const Zentara::Infrastructure::SpatialReference::CoordinateReferenceSystemDefinition& source,
                  const Zentara::Infrastructure::SpatialReference::CoordinateReferenceSystemDefinition& target);

/// A transformation or path that a configuration names, by AUTHORITY:CODE or by its exact name.
struct ConfiguredOperation {
    std::wstring codeOrName;
    Zentara::Infrastructure::SpatialReference::TransformationKind kind =
        Zentara::Infrastructure::SpatialReference::transformationNone;
};

} // namespace Embedded
