// Coordinate operations between two systems of the catalog: what a program shows when a user chooses one. The module
// has no need of it.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "embedded/spatial_reference/catalog/catalog.h"
#include "platform/export.h"
#include "platform/spatial_reference/transformation.h"

namespace Embedded {

/// Whether an operation is applied as it is defined, or from its target to its source.
enum class OperationDirection { forward, inverse };

/// A file that an operation reads.
struct OperationGrid {
    std::wstring name;
    bool isInstalled = false;
    std::wstring url; // empty where none is known
};

/// A transformation or path of the catalog, as it would be used between two systems.
struct CatalogOperation {
    std::wstring code; // AUTHORITY:CODE
    std::wstring name;
    int kind = Zentara::Infrastructure::SpatialReference::transformationNone; // TransformationKind, never none
    std::optional<double> accuracyInMetres;
    std::wstring areaOfUse;
    OperationDirection direction = OperationDirection::forward;
    bool isReversible = false;
    bool isImplemented = true; // whether PROJ knows the method in this direction; true where a grid is missing
    std::vector<OperationGrid> grids;

    /// Whether it can carry coordinates here and now.
    ZSR_API bool isUsable() const;
};

enum class RefusalReason {
    catalogUnavailable,
    unknownSystem,
    notEarthReferenced, // a plane system that lies nowhere on the Earth
    noOperation,        // PROJ knows no way between the systems
    unknownOperation,
    ambiguousOperation, // a name that several have; they are the candidates
    doesNotFit,         // the operation does not lead between the systems, or its kind names neither path nor step
    notReversible,      // it would have to be applied inversely and must not be
    missingGrid,
    notImplemented
};

/// Why there is no answer: the code or name that it is about, and a sentence for a person, both of one line.
struct OperationRefusal {
    RefusalReason reason = RefusalReason::unknownSystem;
    std::wstring subject;
    std::wstring message;
    std::vector<OperationCandidate> candidates;
};

struct OperationList {
    std::vector<CatalogOperation> operations;
    std::optional<OperationRefusal> refusal; // of the question itself; an empty list is none
};

/// The transformations and paths of the catalog that lead from the datum of the source to the datum of the target, or
/// back, and what they say of heights is what the systems' heights need. Deprecated ones and PROJ's own compositions,
/// which have no code to be configured by, are left out.
///
/// Best first: what can be used here before what cannot (a grid missing, defined the other way and not reversible,
/// method not implemented); then in PROJ's order, which is that of the larger area of use and then of the better
/// accuracy; then those that PROJ itself would not offer, by accuracy and code.
ZSR_API OperationList operationsBetween(std::wstring_view sourceCode, std::wstring_view targetCode);

/// A transformation or path that a configuration names, by AUTHORITY:CODE or by its exact name.
struct ConfiguredOperation {
    std::wstring codeOrName;
    int kind = Zentara::Infrastructure::SpatialReference::transformationNone;
};

} // namespace Embedded
