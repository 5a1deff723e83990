// Random pairs of systems of PROJ's catalog, with points that lie in the areas of use of both.
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

    bool contains(double longitude, double latitude) const;
};

/// A point in the axes and units of a system.
using AxisPoint = std::array<double, 3>;

struct CatalogPair {
    std::string source;
    std::string target;
    double degreesInSourceUnit = 1; // 1 also if the system is not geographic
    double degreesInTargetUnit = 1;
    std::vector<AxisPoint> points = {};
    bool hasTwoDatums = false;
};

class CatalogPairs {
public:
    /// The same seed gives the same pairs.
    explicit CatalogPairs(unsigned seed);

    CatalogPair draw();

private:
    struct Place {
        double longitude;
        double latitude;
        double height;
    };

    double randomBetween(double least, double most);
    const CatalogSystem& randomSystem();
    Place randomPlaceIn(const CatalogSystem& system);
    const CatalogSystem& randomTarget(const CatalogSystem& source, const Place& place);

    std::mt19937 random_;
    std::vector<CatalogSystem> systems_;
    unsigned turns_ = 0;
};

} // namespace Tests
