// All operations from which one can be chosen between two systems, and where each puts a point. The module does not
// need it.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "embedded/spatial_reference/operations/coordinate_operations.h"

namespace Embedded {

/// Compares horizontal positions; heights are left out. Positions on the source are in degrees on the datum of the
/// source, from Greenwich, whatever the units and the meridian of the source.
class ZSR_API CandidateOperations {
public:
    CandidateOperations(const CandidateOperations&) = delete;
    CandidateOperations& operator=(const CandidateOperations&) = delete;
    virtual ~CandidateOperations();

    /// The operations of operationsBetween, in its order, and behind them those that PROJ composes itself, in PROJ's
    /// order. The latter have no code and no kind.
    const std::vector<CatalogOperation>& operations() const { return operations_; }
    /// The areas of use of the source and of the target; nothing where none is known.
    const std::optional<GeographicBounds>& sourceArea() const { return sourceArea_; }
    const std::optional<GeographicBounds>& targetArea() const { return targetArea_; }

    /// Returns whether the source or the target has a height system, which plays no part in the positions.
    bool leavesHeightsOut() const { return leavesHeightsOut_; }

    /// Transforms the points by the operation of that index, onto the datum of the target. A point that it cannot
    /// transform becomes not a number. The Error, with the status of an OperationError, says why the operation cannot
    /// be used.
    [[nodiscard]] virtual Expected<std::vector<GeographicPoint>> positions(std::size_t operation,
                                                                           std::span<const GeographicPoint> points) = 0;
    /// The lengths in metres of the geodesics between positions on the target's ellipsoid. Not a number where one of
    /// the two is not a number.
    [[nodiscard]] virtual std::vector<double> distances(std::span<const GeographicPoint> from,
                                                        std::span<const GeographicPoint> to) const = 0;

protected:
    CandidateOperations() = default;

    std::vector<CatalogOperation> operations_;
    std::optional<GeographicBounds> sourceArea_;
    std::optional<GeographicBounds> targetArea_;
    bool leavesHeightsOut_ = false;
};

/// The Error has the status of an OperationError.
ZSR_API Expected<std::unique_ptr<CandidateOperations>> findCandidateOperations(std::wstring_view sourceCode,
                                                                               std::wstring_view targetCode);
/// The same between two definitions, which the catalog need not have.
ZSR_API Expected<std::unique_ptr<CandidateOperations>>
findCandidateOperations(const Zentara::Infrastructure::SpatialReference::CoordinateReferenceSystemDefinition& source,
                        const Zentara::Infrastructure::SpatialReference::CoordinateReferenceSystemDefinition& target);

/// The bounds of the system's area of use; nothing where none is known. The Error has the status of an OperationError.
ZSR_API Expected<std::optional<GeographicBounds>>
boundsOfUse(const Zentara::Infrastructure::SpatialReference::CoordinateReferenceSystemDefinition& system);

} // namespace Embedded
