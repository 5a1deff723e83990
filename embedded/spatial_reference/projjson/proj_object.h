// What PROJ says about one of its objects.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "embedded/spatial_reference/projjson/catalog_code.h"
#include "embedded/spatial_reference/projjson/proj_context.h"

namespace Embedded {

/// AUTHORITY:CODE of an object; empty when it has none.
std::string codeOfObject(const PJ* object);

/// The code of the catalog's object from which PROJ made this one. PROJ gives the code DERIVED_FROM(EPSG):1241 to an
/// operation whose grid it knows under another file name, and INVERSE(EPSG):1241 to an inverted one. Empty when there
/// is no code.
std::string originalCode(const PJ* object);

/// Where an object is meant to be used. The bounds are in degrees; `west` is above `east` across the antimeridian.
struct AreaOfUse {
    std::string name; // empty when PROJ has none
    double west = 0;
    double south = 0;
    double east = 0;
    double north = 0;

    bool contains(double latitude, double longitude) const;
};
/// Nothing when the object has no area of use.
std::optional<AreaOfUse> areaOfUse(const PJ* object);

/// The object as WKT of one line; nothing when PROJ cannot write it so.
std::optional<std::string> wktOf(const PJ* object, PJ_WKT_TYPE type);

/// The objects of a list, without those that PROJ cannot make. The list may be null.
std::vector<ProjObject> objectsOf(const ProjList& list);

} // namespace Embedded
