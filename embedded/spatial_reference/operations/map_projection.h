// Projects the points of a map that is drawn. Transformations of coordinates do not need it.
#pragma once

#include <memory>
#include <span>
#include <string>

#include "embedded/base/error.h"
#include "platform/export.h"

namespace Embedded {

/// A longitude and a latitude in degrees, or a place on a plane map in metres.
struct MapPoint {
    double x = 0;
    double y = 0;

    bool operator==(const MapPoint&) const = default;
};

class MapProjection {
public:
    /// `definition` is a projection of PROJ with its parameters, such as "+proj=eqearth +lon_0=10". The Error says why
    /// PROJ cannot make it.
    ZSR_API static Expected<MapProjection> create(const std::string& definition);
    ZSR_API MapProjection(MapProjection&&) noexcept;
    ZSR_API MapProjection& operator=(MapProjection&&) noexcept;
    ZSR_API ~MapProjection();

    /// Replaces longitudes and latitudes by places on the map. What the projection cannot show becomes two NaN.
    ZSR_API void project(std::span<MapPoint> points) const;
    /// The opposite.
    ZSR_API void unproject(std::span<MapPoint> points) const;

private:
    struct Implementation;
    explicit MapProjection(std::unique_ptr<Implementation> implementation);

    std::unique_ptr<Implementation> implementation_;
};

} // namespace Embedded
