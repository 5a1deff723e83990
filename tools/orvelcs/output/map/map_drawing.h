// Draws a map into an SVG, part by part: what is drawn first lies behind what is drawn later.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "orvelcs/output/map/coastlines.h"
#include "orvelcs/output/map/graticule.h"
#include "orvelcs/output/map/map_view.h"
#include "orvelcs/output/svg_writer.h"

namespace Orvelcs {

/// The rules of the classes page, text, muted, sea, land, coast, graticule, degrees, frame and scale, for light and for
/// dark surroundings.
std::string mapStyle();
/// The rules for dark surroundings only, not for paper.
std::string darkRules(std::string_view rules);

class MapDrawing {
public:
    /// Chooses the projection, the frame and the scale of the coastlines by the extent; see MapView. The labels of the
    /// graticule stand outside of the frame: they need 40 units beside the room, and 20 above and below it.
    MapDrawing(const GeographicBounds& extent, const PageBox& room);

    const MapView& view() const { return view_; }

    void drawSea(SvgWriter& svg) const;
    void drawLand(SvgWriter& svg) const;
    void drawCoast(SvgWriter& svg) const;
    void drawGraticule(SvgWriter& svg) const;
    /// The degrees at the ends of the graticule's lines.
    void drawDegrees(SvgWriter& svg) const;
    void drawFrame(SvgWriter& svg) const;
    /// The area, filled and outlined as the class says.
    void drawBox(SvgWriter& svg, const GeographicBounds& bounds, std::string_view cssClass) const;
    /// A scale bar with its left end at the point, where the scale is nearly even all over the map. Returns the width
    /// that it takes; 0 where there is none.
    double drawScaleBar(SvgWriter& svg, const MapPoint& point) const;

    /// Where other labels on the map must leave room.
    std::vector<PageBox> degreesOnMap() const;
    /// "Equal Earth projection, centred on 10°E. Coastlines: Natural Earth, 1:110 million."
    std::string describe() const;

private:
    MapView view_;
    CoastlineScale coastlineScale_;
    std::vector<PlaneLine> land_; // rings of longitudes and latitudes
    Graticule graticule_;
};

} // namespace Orvelcs
