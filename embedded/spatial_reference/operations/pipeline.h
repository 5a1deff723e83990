// Transforms points by several of PROJ's operations, one after another.
#pragma once

#include <vector>

#include "embedded/spatial_reference/operations/coordinate_transformer.h"
#include "embedded/spatial_reference/operations/system_parts.h"

namespace Embedded {

struct PipelineStep {
    ProjObject operation;
    PJ_DIRECTION direction = PJ_FWD;
    bool keepsHeight = false; // whether the height stays as it is
};

/// What the pipeline as a whole does with a height.
enum class HeightRule {
    transform, // as its steps do
    keep,
    fail // because the systems' heights differ and no step says how
};

class Pipeline : public CoordinateTransformer {
public:
    Pipeline(const SystemParts& source, const SystemParts& target, UsedOperation used, HeightRule heights);

    /// Adds a step; none for a null operation.
    void append(ProjObject operation, PJ_DIRECTION direction, bool keepsHeight);

    [[nodiscard]] TransformedPoint transform(const CoordinatePoint& point) override;
    /// Transforms coordinates with heights in place, whatever the rule for heights; PROJ's errors become HUGE_VAL.
    void transformCoordinates(std::vector<PJ_COORD>& coordinates) const;
    /// Does nothing: a configured operation has its grids.
    [[nodiscard]] Expected<void> findMissingGrids(const CoordinatePoint& /*point*/, std::size_t /*operation*/) override
    {
        return {};
    }
    bool choosesForEachPoint() const override { return false; }

private:
    Expected<CoordinatePoint> transformPoint(const CoordinatePoint& point) const;

    std::vector<PipelineStep> steps_;
    HeightRule heights_;
};

} // namespace Embedded
