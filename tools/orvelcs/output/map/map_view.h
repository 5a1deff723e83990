// A part of the Earth in a rectangle of a page: where places lie on the page, and what of lines and areas is seen.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "embedded/spatial_reference/operations/map_projection.h"
#include "orvelcs/output/map/horizon.h"
#include "orvelcs/output/map/projection_choice.h"

namespace Orvelcs {

/// A rectangle of a page, in its units. y goes down.
struct PageBox {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    double right() const { return x + width; }
    double bottom() const { return y + height; }
    MapPoint middle() const { return {x + width / 2, y + height / 2}; }
    bool meets(const PageBox& other) const;
    bool contains(const PageBox& other) const;
};

class MapView {
public:
    /// Shows the extent as large as it fits into the room, with something around it. The frame is as wide as the room
    /// and at most as high. Throws Failure when PROJ cannot make the projection.
    MapView(const GeographicBounds& extent, const PageBox& room);

    const ProjectionChoice& projection() const { return choice_; }
    const PageBox& frame() const { return frame_; }
    /// The latitudes and longitudes that the frame shows, and some more. East is greater than west.
    const PlaneRectangle& window() const { return window_; }

    /// Where the place lies on the page; nothing when it is not seen.
    std::optional<MapPoint> at(double latitude, double longitude) const;
    bool sees(double latitude, double longitude) const { return at(latitude, longitude).has_value(); }
    /// The longitude and the latitude of a point of the page; nothing outside of the map.
    std::optional<MapPoint> placeAtPoint(const MapPoint& point) const;

    /// What is seen of an area between lines of longitude and latitude, as rings of the page to be filled by the
    /// even-odd rule. The ring has no jumps at the antimeridian: it goes on beyond 180 degrees.
    std::vector<PlaneLine> areas(const PlaneLine& ring) const;
    /// What is seen of a line. Edges along parallels and meridians are curved as these are.
    std::vector<PlaneLine> lines(const PlaneLine& line) const;
    /// The outline of an area between two meridians and two parallels. One all around the Earth has no meridians, and
    /// the parallel of a pole is none.
    std::vector<PlaneLine> outline(const GeographicBounds& bounds) const;
    /// Returns whether the map is a disc of the Earth within its frame.
    bool showsDisc() const { return showsDisc_; }
    /// All of the Earth that the map can show, as an area.
    std::vector<PlaneLine> disc() const;
    /// The edge of the map, which is closed: of the Earth where the map shows its outline, else of the frame.
    PlaneLine edge() const;

    /// How many metres a unit of the page is at a point of the frame, horizontally; nothing outside of the map.
    std::optional<double> metresInAUnitAt(const MapPoint& point) const;

private:
    void fitWorld(const PageBox& room);
    void fitExtent(const GeographicBounds& extent, const PageBox& room);
    void findHorizon();
    void findWindow();
    std::vector<MapPoint> sampledPlaces() const;
    bool isPastHorizon(const MapPoint& place) const { return horizon_ && horizon_->isPast(place); }
    PlaneLine subdivide(const PlaneLine& line, bool isClosed) const;
    /// Longitudes and latitudes to points of the page.
    void toPage(PlaneLine& places) const;
    std::vector<double> turnsInWindow(const PlaneRectangle& bounds) const;

    ProjectionChoice choice_;
    Embedded::MapProjection projection_;
    PageBox frame_;
    PlaneRectangle metres_;          // of the frame
    PlaneRectangle window_;          // longitudes and latitudes
    std::optional<Horizon> horizon_; // of an azimuthal projection
    bool showsDisc_ = false;
    double step_ = 1; // of subdivided edges, in degrees
};

} // namespace Orvelcs
