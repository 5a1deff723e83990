// Pairs of systems drawn from PROJ's catalog by lot, with points that lie in both.
#pragma once

#include <array>
#include <random>
#include <string>
#include <vector>

namespace Tests {

/// A system of the catalog and the box around its area of use, in degrees.
struct CatalogSystem {
    std::string code;
    bool isGeographic = false;
    double west = 0;
    double south = 0;
    double east = 0;
    double north = 0;

    bool holds(double longitude, double latitude) const;
};

/// In the source's own axes and units.
using SourcePoint = std::array<double, 3>;

struct CatalogPair {
    std::string source;
    std::string target;
    double degreesInSourceUnit = 1; // 1 too for a system that is not geographic itself
    double degreesInTargetUnit = 1;
    std::vector<SourcePoint> points = {};
    bool hasTwoDatums = false;
};

class CatalogPairs {
public:
    /// All that it draws follows from the seed.
    explicit CatalogPairs(unsigned seed);

    CatalogPair draw();

private:
    struct Place {
        double longitude;
        double latitude;
        double height;
    };

    double between(double least, double most);
    const CatalogSystem& anySystem();
    Place placeIn(const CatalogSystem& system);
    const CatalogSystem& partnerOf(const CatalogSystem& source, const Place& place);

    std::mt19937 random_;
    std::vector<CatalogSystem> systems_;
    unsigned turns_ = 0;
};

} // namespace Tests
