// Carries points from one system of the catalog to another. The module has no need of it.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
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
    std::optional<CoordinatePoint> point; // nothing when this point cannot be transformed; never with an epoch
    std::wstring failure;                 // why
    std::size_t operation = 0;            // which of the transformer's operations it went through
};

/// An operation that points go through.
struct UsedOperation {
    /// The catalog's, also where PROJ composes it with conversions alone; empty for several in a row and for none.
    std::wstring code;
    std::wstring name;
    std::optional<double> accuracyInMetres;
    bool isBallpark = false;      // whether datums are taken for equal for want of anything better
    bool isTimeDependent = false; // whether its result depends on the point's epoch
    OperationDirection direction = OperationDirection::forward;
};

/// A grid without which a point went through a less accurate operation.
struct MissingGrid {
    OperationGrid grid;
    UsedOperation operation; // the one that lacks it
};

/// The unit of an axis: radians or metres to one unit.
struct AxisUnit {
    bool isAngular = false;
    double toBaseUnit = 1;
};

class ZSR_API CoordinateTransformer {
public:
    CoordinateTransformer(const CoordinateTransformer&) = delete;
    CoordinateTransformer& operator=(const CoordinateTransformer&) = delete;
    virtual ~CoordinateTransformer();

    /// The answer has a height where the point has one, and always in a geocentric system. A point of a geocentric
    /// system needs all three coordinates. An operation that depends on time takes a point without an epoch for one of
    /// the operation's own reference epoch.
    [[nodiscard]] virtual TransformedPoint transform(const CoordinatePoint& point) = 0;
    /// Looks for grids without which the point had to go through operations()[operation]. The first look takes as long
    /// as making the transformer. Returns why the catalog could not be asked; nothing when it was.
    [[nodiscard]] virtual std::optional<OperationRefusal> lookForMissingGrids(const CoordinatePoint& point,
                                                                              std::size_t operation) = 0;

    /// Whether PROJ has several operations for the two systems and chooses one of them for each point.
    virtual bool choosesForEachPoint() const = 0;
    /// The operations that points went through so far, in the order of their first use. Holds the one operation from
    /// the start when there is no choice.
    const std::vector<UsedOperation>& operations() const { return operations_; }
    /// The grids that lookForMissingGrids has found so far, each one once.
    const std::vector<MissingGrid>& missingGrids() const { return missingGrids_; }
    /// The units of the target's three axes. The third one is the metre when the target has no height.
    const std::vector<AxisUnit>& targetUnits() const { return targetUnits_; }

protected:
    explicit CoordinateTransformer(std::vector<AxisUnit> targetUnits);

    std::vector<UsedOperation> operations_;
    std::vector<MissingGrid> missingGrids_;

private:
    std::vector<AxisUnit> targetUnits_;
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
/// lacks a grid or has a method that PROJ does not know is refused. A height is carried where both systems have
/// ellipsoidal heights or the operation changes heights, is kept where the systems have the same height system or one
/// of them none, and makes the point fail where the systems' heights differ and the operation does not say how.
///
/// Without one: what PROJ itself chooses for each point, heights included. Operations whose grids are not installed are
/// out of the question.
ZSR_API TransformerResult makeTransformer(std::wstring_view sourceCode, std::wstring_view targetCode,
                                          const std::optional<ConfiguredOperation>& configured);

/// Whether PROJ may read grids over the network, which it may only where the environment variable PROJ_NETWORK says so.
ZSR_API bool isGridNetworkEnabled();
/// Where PROJ's programs put the grids that they download, as a path in UTF-8.
ZSR_API std::string gridFolder();

} // namespace Embedded
