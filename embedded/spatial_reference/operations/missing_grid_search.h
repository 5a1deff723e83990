// Finds the grids without which points go through a less accurate operation.
#pragma once

#include <vector>

#include "embedded/spatial_reference/operations/coordinate_transformer.h"
#include "embedded/spatial_reference/operations/system_parts.h"

namespace Embedded {

class MissingGridSearch {
public:
    MissingGridSearch(const SystemParts& source, const SystemParts& target);

    /// What the most accurate operation lacks that holds the point and would be better than the one that was used.
    /// Where its grids cannot be downloaded, the next one that is better goes along, down to one whose grids can.
    /// Nothing is answered twice.
    std::vector<MissingGrid> gridsFor(const CoordinatePoint& point, const UsedOperation& used);

private:
    /// In degrees; across the antimeridian where west is the larger one.
    struct Area {
        double west;
        double south;
        double east;
        double north;
        bool holds(double latitude, double longitude) const;
    };
    struct Candidate {
        UsedOperation operation;
        std::vector<OperationGrid> missing;
        Area area;
        bool isDownloadable;
        bool isAnswered = false;
    };

    void collect(PJ* operation);
    std::vector<MissingGrid> gridsAt(double latitude, double longitude, const UsedOperation& used);
    static bool isBetter(const Candidate& candidate, const UsedOperation& used);

    std::vector<Candidate> candidates_; // the most accurate first
    ProjObject toWgs84_;                // null without candidates, and where the source has no horizontal position
};

} // namespace Embedded
