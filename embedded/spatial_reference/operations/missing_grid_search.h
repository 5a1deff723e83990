// Finds the grids that are not installed, so that points are transformed by a less accurate operation.
#pragma once

#include <vector>

#include "embedded/spatial_reference/operations/coordinate_transformer.h"
#include "embedded/spatial_reference/operations/system_parts.h"
#include "embedded/spatial_reference/projjson/proj_object.h"

namespace Embedded {

class MissingGridSearch {
public:
    MissingGridSearch(const SystemParts& source, const SystemParts& target);

    /// The grids of the most accurate operation whose area contains the point and that is better than the used one. If
    /// they cannot be downloaded, the grids of the next better operations follow, down to one whose grids can be. Each
    /// operation is reported once.
    std::vector<MissingGrid> gridsFor(const CoordinatePoint& point, const UsedOperation& used);

private:
    struct Candidate {
        UsedOperation operation;
        std::vector<OperationGrid> missing;
        AreaOfUse area;
        bool isDownloadable;
        bool isReported = false;
    };

    void collect(PJ* operation);
    std::vector<MissingGrid> gridsAt(double latitude, double longitude, const UsedOperation& used);
    static bool isBetter(const Candidate& candidate, const UsedOperation& used);

    std::vector<Candidate> candidates_; // the most accurate first
    ProjObject toWgs84_;                // null without candidates, and where the source has no horizontal position
};

} // namespace Embedded
