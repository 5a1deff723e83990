// The colours of distances: round steps from light, where there is little between two transformations, to dark.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace Orvelcs {

/// A colour of the scale cividis, which is even for the eye, for people who see few colours, and in grey print. The
/// share is 0 for the lightest and 1 for the darkest; "#1a2b3c".
std::string cividisColour(double share);

struct DistanceScale {
    /// The lower ends of the bands, and the upper end of the last one. Empty where there is no distance at all.
    std::vector<double> bounds;
    int digits = 0;         // behind the point, in the texts
    bool isUniform = false; // all distances are the same to a millimetre, and there is one band
    bool hasGaps = false;   // some distances are missing

    std::size_t bandCount() const { return bounds.empty() ? 0 : bounds.size() - 1; }
    std::string colour(std::size_t band) const;
    /// A bound of a band, in metres.
    std::string boundText(std::size_t index) const;
};

/// The scale for the distances, which may be missing: not a number. A few that are much larger than all others share
/// the last band.
DistanceScale makeDistanceScale(const std::vector<double>& metres);

/// To the millimetre: "1.234 m".
std::string distanceInMetres(double metres);

} // namespace Orvelcs
