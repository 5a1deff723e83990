// An empty GeoPackage layer: a file of one feature table without features, in a coordinate reference system.
#pragma once

#include <string>

namespace Orvelcs {

/// A coordinate reference system as a GeoPackage names and defines it.
struct GeoPackageSystem {
    int id = 0; // of this file alone
    std::string name;
    std::string organization = "NONE"; // that defines the system
    int codeOfOrganization = 0;
    std::string wkt1; // empty where WKT 1 cannot say the system
    std::string wkt2; // which is an extension of the standard; empty for a file without it
};

/// The number of WGS 84, of longitudes and latitudes, in every GeoPackage.
inline constexpr int kGeoPackageWgs84 = 4326;
/// The number of a system that no organization numbers.
inline constexpr int kGeoPackageOwnSystem = 100000;

/// The bytes of the file. Throws Failure about `subject` when SQLite cannot make it.
std::string writeGeoPackage(const GeoPackageSystem& system, const std::string& subject);

} // namespace Orvelcs
