// Transforms points by the operations that PROJ itself chooses.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "embedded/spatial_reference/operations/coordinate_transformer.h"
#include "embedded/spatial_reference/operations/missing_grid_search.h"
#include "embedded/spatial_reference/operations/system_parts.h"

namespace Embedded {

class ProjTransformer : public CoordinateTransformer {
public:
    /// Throws ErrorException when PROJ knows no operation between the systems.
    ProjTransformer(SystemParts source, SystemParts target);

    [[nodiscard]] TransformedPoint transform(const CoordinatePoint& point) override;
    [[nodiscard]] std::vector<TransformedPoint> transformAll(std::span<const CoordinatePoint> points) override;
    [[nodiscard]] Expected<void> findMissingGrids(const CoordinatePoint& point, std::size_t operation) override;
    bool choosesForEachPoint() const override { return choosesForEachPoint_; }

private:
    /// Identifies the operation that PROJ used last. Getting the operation itself takes a hundred times as long as a
    /// point.
    struct Signature {
        std::string description;
        std::string definition;
    };

    std::optional<CoordinatePoint> finitePoint(const PJ_COORD& coordinate, bool givenHeight) const;
    void collectMissingGrids(const CoordinatePoint& point, const UsedOperation& used);
    std::size_t lastUsedOperation();
    bool isLastUsed(std::size_t operation, const PJ_PROJ_INFO& info) const;

    SystemParts source_;
    SystemParts target_;
    ProjObject proj_;
    bool choosesForEachPoint_;
    std::vector<Signature> signatures_; // of the operations; empty where there is no choice
    std::size_t lastUsed_ = 0;
    std::optional<MissingGridSearch> missingGridSearch_; // made when it is first needed
};

} // namespace Embedded
