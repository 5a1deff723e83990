// The operations of PROJ that a point goes through one after another.
#pragma once

#include <vector>

#include "embedded/spatial_reference/operations/coordinate_transformer.h"
#include "embedded/spatial_reference/operations/system_parts.h"

namespace Embedded {

struct ChainStep {
    ProjObject operation;
    PJ_DIRECTION direction = PJ_FWD;
    bool keepsHeight = false; // the height is none of its business
};

/// What becomes of a height from end to end.
enum class HeightRule {
    carried, // what the steps make of it
    kept,    // as it was given
    unknown  // the systems' heights differ and no step says how
};

class Pipeline : public CoordinateTransformer {
public:
    Pipeline(const SystemParts& source, const SystemParts& target, UsedOperation used, HeightRule heights);

    /// Without an operation there is nothing to do.
    void append(ProjObject operation, PJ_DIRECTION direction, bool keepsHeight);

    [[nodiscard]] TransformedPoint transform(const CoordinatePoint& point) override;
    /// A configured operation has its grids.
    [[nodiscard]] std::optional<OperationRefusal> lookForMissingGrids(const CoordinatePoint& /*point*/,
                                                                      std::size_t /*operation*/) override
    {
        return std::nullopt;
    }
    bool choosesForEachPoint() const override { return false; }

private:
    const char* refusalOf(const CoordinatePoint& point) const;

    std::vector<ChainStep> steps_;
    HeightRule heights_;
    bool sourceNeedsHeight_;
    bool targetNeedsHeight_;
};

} // namespace Embedded
