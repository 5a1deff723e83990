// Ranks the ways to transform between two systems for a place, and tells how far apart they lie. Prints nothing.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "embedded/spatial_reference/operations/candidate_operations.h"
#include "orvelcs/drawing/system_pair.h"

namespace Orvelcs {

/// The place that matters to a choice.
struct ComparedPlace {
    /// An area, or points, which are areas without an extent. Empty: `at`, or else the middle of the common area of
    /// use.
    std::vector<Embedded::GeographicBounds> parts;
    std::optional<Embedded::GeographicPoint> at; // where distances are wanted; by default in the middle of the parts
};

/// How much of the place lies in a candidate's area of use.
enum class Coverage { all, part, none, unknown };

struct Candidate {
    std::size_t number = 0; // in the ranking, from 1
    std::size_t index = 0;  // among CandidateOperations::operations()
    Embedded::CatalogOperation operation;
    Coverage coverage = Coverage::unknown;
    bool isUsable = false;
    std::string reason{};             // why it cannot be used, or has no distance
    std::optional<double> distance{}; // in metres from the reference, at the point

    bool hasCode() const { return !operation.code.empty(); }
    /// Returns whether a configuration can name it and it can be used here.
    bool isStorable() const { return hasCode() && isUsable; }
};

/// Points are in degrees from Greenwich on the datum of the source; distances are horizontal, in metres on the
/// ellipsoid of the target.
class TransformationComparison {
public:
    /// Throws Failure for systems that are unknown or equal, for a pair without candidates, and for one without a
    /// common area of use where no place is given.
    TransformationComparison(const SystemPair& pair, const ComparedPlace& place);

    /// The best first: those that cover all of the place, those that cover a part, ballpark ones, those outside. Among
    /// equals a known accuracy precedes an unknown one, and a smaller one a larger one. One that lacks a grid stands
    /// where it would stand with it.
    const std::vector<Candidate>& candidates() const { return candidates_; }
    /// The candidate from which distance is measured: the first that gives a position at the point; null where none
    /// does.
    const Candidate* reference() const { return reference_ < candidates_.size() ? &candidates_[reference_] : nullptr; }
    /// Measures the candidates' distances from another one.
    void measureFrom(const Candidate& reference);

    /// Nothing where the areas are not known, or have nothing in common.
    const std::optional<Embedded::GeographicBounds>& commonArea() const { return commonArea_; }
    const ComparedPlace& place() const { return place_; }
    const Embedded::GeographicPoint& point() const { return *place_.at; }
    bool leavesHeightsOut() const { return operations_->leavesHeightsOut(); }

    /// Transforms the points by a candidate, onto the datum of the target. A point that it cannot transform becomes not
    /// a number. Throws Failure for a candidate that cannot be used.
    std::vector<Embedded::GeographicPoint> positions(const Candidate& candidate,
                                                     std::span<const Embedded::GeographicPoint> points);
    /// The distances between such positions, one by one; not a number where one of the two is not.
    std::vector<double> distances(std::span<const Embedded::GeographicPoint> from,
                                  std::span<const Embedded::GeographicPoint> to) const;

private:
    void completePlace();
    void rank();
    void findReference();

    std::string subject_; // "SRC to DST"
    std::unique_ptr<Embedded::CandidateOperations> operations_;
    std::optional<Embedded::GeographicBounds> commonArea_;
    ComparedPlace place_;
    std::vector<Candidate> candidates_;
    std::vector<Embedded::GeographicPoint> positions_; // at the point, of each candidate
    std::size_t reference_ = 0;
};

} // namespace Orvelcs
