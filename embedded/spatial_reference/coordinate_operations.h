// Coordinate operations between two systems of the catalog: what a program shows when a user chooses one, and what
// carries coordinates through it. The module has no need of it.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "embedded/spatial_reference/catalog.h"
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

/// Coordinates in the order of a system's own axes and in their units.
struct CoordinatePoint {
    double x = 0;
    double y = 0;
    std::optional<double> z;
};

struct TransformedPoint {
    std::optional<CoordinatePoint> point; // nothing when this point cannot be transformed
    std::wstring failure;                 // why
};

/// What a transformer uses.
struct UsedOperation {
    std::wstring code; // empty for PROJ's own compositions
    std::wstring name;
    std::optional<double> accuracyInMetres;
    bool isBallpark = false; // whether datums are taken for equal for want of anything better
    OperationDirection direction = OperationDirection::forward;
};

/// The unit of an axis: radians or metres to one unit.
struct AxisUnit {
    bool isAngular = false;
    double toBaseUnit = 1;
};

/// A transformation or path that a configuration names, by AUTHORITY:CODE or by its exact name.
struct ConfiguredOperation {
    std::wstring codeOrName;
    int kind = Zentara::Infrastructure::SpatialReference::transformationNone;
};

class OperationChain;

/// Carries points from one system to another, all of them through the same operation.
class ZSR_API CoordinateTransformer {
public:
    explicit CoordinateTransformer(std::unique_ptr<OperationChain> chain);
    CoordinateTransformer(const CoordinateTransformer&) = delete;
    CoordinateTransformer& operator=(const CoordinateTransformer&) = delete;
    ~CoordinateTransformer();

    /// The answer has a height where the point has one, and always in a geocentric system. A point of a geocentric
    /// system needs all three coordinates. A height is carried where both systems have ellipsoidal heights or the
    /// operation changes heights, is kept where the systems have the same height system or one of them none, and makes
    /// the point fail where the systems' heights differ and the operation does not say how.
    [[nodiscard]] TransformedPoint transform(const CoordinatePoint& point) const;

    const UsedOperation& operation() const;
    /// Of the target's three axes; where it has no height, metres.
    const std::vector<AxisUnit>& targetUnits() const;

private:
    std::unique_ptr<OperationChain> chain_;
};

struct TransformerResult {
    std::unique_ptr<CoordinateTransformer> transformer; // null when refused
    std::optional<OperationRefusal> refusal;
};

/// A transformer between two systems.
///
/// With a configured operation: from the source to the operation's own source without a change of datum (projection,
/// axes, units and prime meridian only), through the operation, and likewise from its target to the target. It is
/// applied forward where its systems fit so, else inversely where it fits so and is reversible; whichever way needs no
/// change of prime meridian goes first. Nothing is ever put in its place: one that does not fit, must not be reversed,
/// lacks a grid or has a method that PROJ does not know is refused.
///
/// Without one: the first operation of PROJ's list for the two systems that can be used here, one that takes datums for
/// equal only where there is no other. It is chosen once, for the systems' common area, and not anew for each point.
ZSR_API TransformerResult makeTransformer(std::wstring_view sourceCode, std::wstring_view targetCode,
                                          const std::optional<ConfiguredOperation>& configured);

} // namespace Embedded
