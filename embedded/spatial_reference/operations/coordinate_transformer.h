// Transforms points from one system of the catalog to another. The module does not need it.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "embedded/spatial_reference/operations/coordinate_operations.h"

namespace Embedded {

/// Coordinates in the order of a system's own axes and in their units.
struct CoordinatePoint {
    double x = 0;
    double y = 0;
    std::optional<double> z = std::nullopt;
    std::optional<double> epoch = std::nullopt; // when the coordinates hold, a decimal year
};

struct TransformedPoint {
    Expected<CoordinatePoint> point; // without an epoch; the Error says why this point cannot be transformed
    std::size_t operation = 0;       // the index of its operation among those of the transformer
};

/// An operation that transforms points.
struct UsedOperation {
    /// The code of the catalog's operation, also when PROJ combines it with conversions. Empty for several operations
    /// in a row and for none.
    std::wstring code;
    std::wstring name;
    std::optional<double> accuracyInMetres;
    bool isBallpark = false;      // whether it treats different datums as equal because nothing better is known
    bool isTimeDependent = false; // whether its result depends on the point's epoch
    OperationDirection direction = OperationDirection::forward;
};

/// A grid that is not installed, so that a less accurate operation was used.
struct MissingGrid {
    OperationGrid grid;
    UsedOperation operation; // that needs it
};

/// Where the coordinates of an axis grow; other for a height and for an axis that points to a meridian.
enum class AxisDirection { north, south, east, west, other };

/// The unit of an axis, in radians or metres, and its direction.
struct AxisUnit {
    bool isAngular = false;
    double toBaseUnit = 1;
    AxisDirection direction = AxisDirection::other;
};

struct SystemAxes {
    std::vector<AxisUnit> units; // of three axes; the third one is the metre when the system has no height
    /// Whether the first two are exchanged where longitudes stand before latitudes and eastings before northings. PROJ
    /// knows.
    bool isNorthingFirst = false;
};

struct SystemParts;

class ZSR_API CoordinateTransformer {
public:
    CoordinateTransformer(const CoordinateTransformer&) = delete;
    CoordinateTransformer& operator=(const CoordinateTransformer&) = delete;
    virtual ~CoordinateTransformer();

    /// The result has a height if the point has one, and always in a geocentric system. A point of a geocentric system
    /// needs all three coordinates. An operation that depends on time uses its own reference epoch for a point without
    /// an epoch.
    [[nodiscard]] virtual TransformedPoint transform(const CoordinatePoint& point) = 0;
    /// Transforms the points in their order, each as transform() does.
    [[nodiscard]] virtual std::vector<TransformedPoint> transformAll(std::span<const CoordinatePoint> points);
    /// Adds to missingGrids() the grids whose absence made PROJ use operations()[operation] for the point. The first
    /// call takes as long as makeTransformer. The Error says why the catalog cannot be read.
    [[nodiscard]] virtual Expected<void> findMissingGrids(const CoordinatePoint& point, std::size_t operation) = 0;

    /// Returns whether PROJ has several operations for the two systems and chooses one of them for each point.
    virtual bool choosesForEachPoint() const = 0;
    /// The operations that were used so far, in the order of their first use. Without a choice this is one operation
    /// from the start.
    const std::vector<UsedOperation>& operations() const { return operations_; }
    /// The grids that findMissingGrids has added so far, each once.
    const std::vector<MissingGrid>& missingGrids() const { return missingGrids_; }
    const SystemAxes& sourceAxes() const { return sourceAxes_; }
    const SystemAxes& targetAxes() const { return targetAxes_; }
    /// Returns whether the points need a height, and whether the results have one in any case.
    bool needsHeight() const { return needsHeight_; }
    bool addsHeight() const { return addsHeight_; }

protected:
    CoordinateTransformer(const SystemParts& source, const SystemParts& target);

    std::vector<UsedOperation> operations_;
    std::vector<MissingGrid> missingGrids_;

private:
    SystemAxes sourceAxes_;
    SystemAxes targetAxes_;
    bool needsHeight_;
    bool addsHeight_;
};

/// A transformer between two systems.
///
/// With a configured operation, points are converted to the operation's source without a change of datum (projection,
/// axes, units and prime meridian only), transformed by the operation, and converted likewise to the target. The
/// operation is applied forward if its systems fit so, otherwise inversely if they fit so and it is reversible; a
/// direction that needs no change of prime meridian is preferred. No other operation is used in its place: one that
/// does not fit, must not be reversed, lacks a grid or has a method that PROJ does not implement is an Error. A height
/// is transformed if both systems have ellipsoidal heights or the operation changes heights. It is kept if the systems
/// have the same height system or one of them has none. A point with a height fails if the systems' heights differ and
/// the operation does not say how.
///
/// Without one, PROJ chooses the operation for each point, heights included. It does not choose operations whose grids
/// are not installed.
///
/// The Error has the status of an OperationError.
ZSR_API Expected<std::unique_ptr<CoordinateTransformer>>
makeTransformer(std::wstring_view sourceCode, std::wstring_view targetCode,
                const std::optional<ConfiguredOperation>& configured);
/// The same between two definitions, which the catalog need not have.
ZSR_API Expected<std::unique_ptr<CoordinateTransformer>>
makeTransformer(const Zentara::Infrastructure::SpatialReference::CoordinateReferenceSystemDefinition& source,
                const Zentara::Infrastructure::SpatialReference::CoordinateReferenceSystemDefinition& target,
                const std::optional<ConfiguredOperation>& configured);

/// Checks whether makeTransformer would use the configured operation between the systems if all grids were installed
/// and PROJ had all methods. The Error has the status of an OperationError.
ZSR_API Expected<void> checkConfiguredOperation(std::wstring_view sourceCode, std::wstring_view targetCode,
                                                const ConfiguredOperation& configured);

/// Returns whether PROJ reads grids over the network. It does only if the environment variable PROJ_NETWORK says so.
ZSR_API bool isGridNetworkEnabled();
/// The folder into which PROJ's programs download grids, as a path in UTF-8.
ZSR_API std::string gridFolder();

} // namespace Embedded
