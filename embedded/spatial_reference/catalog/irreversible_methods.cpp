#include "embedded/spatial_reference/catalog/irreversible_methods.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace Embedded {
namespace {

struct Method {
    std::string_view epsgCode;
    std::string_view name;
};

// Height grids are read in one direction only, polynomials have no closed inverse, point motion and the perspective
// views lose what an inverse would need. A 2018 copy of the EPSG dataset flags most of these methods. Five newer ones
// are assumed to be irreversible because they belong to the same families.
constexpr std::array kMethods{
    Method{"1025", "Geographic3D to GravityRelatedHeight (EGM2008)"},
    Method{"1030", "Geographic3D to GravityRelatedHeight (NZgeoid)"},
    Method{"1045", "Geographic3D to GravityRelatedHeight (OSGM02-Ire)"},
    Method{"1047", "Geographic3D to GravityRelatedHeight (Gravsoft)"},
    Method{"1048", "Geographic3D to GravityRelatedHeight (Ausgeoid v2)"},
    Method{"1050", "Geographic3D to GravityRelatedHeight (CI)"},
    Method{"1059", "Geographic3D to GravityRelatedHeight (PNG)"},
    Method{"1060", "Geographic3D to GravityRelatedHeight (CGG2013)"},
    Method{"1064", "Point motion (geocentric Cartesian)"},
    Method{"1067", "Point motion (ellipsoidal)"},
    Method{"1070", "Point motion by grid (Canada NTv2_Vel)"},
    Method{"1072", "Geographic3D to GravityRelatedHeight (OSGM15-Ire)"},
    Method{"1073", "Geographic3D to GravityRelatedHeight (IGN2009)"},
    Method{"1081", "Geographic3D to GravityRelatedHeight (BEV AT)"},
    Method{"1082", "Geographic3D to GravityRelatedHeight (txt)"},
    Method{"1099", "Geographic3D to GravityRelatedHeight (PL txt)"},
    Method{"1106", "Geographic3D to GravityRelatedHeight (ITAL2005)"},
    Method{"1109", "Geographic3D to Depth (Gravsoft)"},
    Method{"9617", "Madrid to ED50 polynomial"},
    Method{"9620", "Norway Offshore Interpolation"},
    Method{"9622", "Affine orthogonal geometric transformation"},
    Method{"9625", "General polynomial (2nd-order)"},
    Method{"9626", "General polynomial (3rd-order)"},
    Method{"9627", "General polynomial (4th-order)"},
    Method{"9631", "Complex polynomial (3rd-order)"},
    Method{"9632", "Complex polynomial (4th-order)"},
    Method{"9634", "Maritime Provinces polynomial interpolation"},
    Method{"9645", "General polynomial of degree 2"},
    Method{"9646", "General polynomial of degree 3"},
    Method{"9647", "General polynomial of degree 4"},
    Method{"9648", "General polynomial of degree 6"},
    Method{"9652", "Complex polynomial of degree 3"},
    Method{"9653", "Complex polynomial of degree 4"},
    Method{"9661", "Geographic3D to GravityRelatedHeight (EGM)"},
    Method{"9662", "Geographic3D to GravityRelatedHeight (Ausgeoid98)"},
    Method{"9663", "Geographic3D to GravityRelatedHeight (OSGM-GB)"},
    Method{"9664", "Geographic3D to GravityRelatedHeight (IGN1997)"},
    Method{"9665", "Geographic3D to GravityRelatedHeight (US .gtx)"},
    Method{"9838", "Vertical Perspective"},
    Method{"9839", "Vertical Perspective (Orthographic case)"},
};

} // namespace

bool isIrreversibleMethod(const char* epsgCode)
{
    return epsgCode && std::ranges::find(kMethods, std::string_view(epsgCode), &Method::epsgCode) != kMethods.end();
}

} // namespace Embedded
