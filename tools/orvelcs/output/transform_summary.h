// Counts which operations transform the points, for notes and JSON.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "embedded/spatial_reference/operations/coordinate_transformer.h"
#include "orvelcs/cli/output.h"

namespace Orvelcs {

class TransformSummary {
public:
    /// `systems` is the subject of the notes.
    TransformSummary(std::string systems, bool isConfigured, const Embedded::CoordinateTransformer& transformer);

    void count(const Embedded::TransformedPoint& result, bool hasEpoch);

    /// Prints the notes that are known before the first point.
    void noteBefore(Output& output) const;
    /// Prints the notes that depend on the points.
    void noteAfter(Output& output) const;
    Json asJson() const;

private:
    std::size_t countedOperations() const;
    std::size_t pointsThrough(std::size_t operation) const;
    void noteChoices(Output& output) const;
    void noteBallparks(Output& output) const;
    void noteMissingGrids(Output& output) const;
    void noteMissingEpochs(Output& output) const;

    std::string systems_;
    bool isConfigured_;
    const Embedded::CoordinateTransformer& transformer_;
    std::vector<std::size_t> points_; // through each of the transformer's operations
    std::size_t transformed_ = 0;
    std::size_t withoutEpoch_ = 0; // through operations that depend on it
};

} // namespace Orvelcs
