#include "embedded/spatial_reference/streams/vocabulary.h"

#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace Embedded {
namespace {

// The order is part of the stream format: entries are added at the end, none is changed or taken out.
// clang-format off
constexpr std::string_view kEntries[] = {
    // Member names.
    R"json("type")json",
    R"json("name")json",
    R"json("id")json",
    R"json("authority")json",
    R"json("code")json",
    R"json("base_crs")json",
    R"json("datum")json",
    R"json("ellipsoid")json",
    R"json("prime_meridian")json",
    R"json("coordinate_system")json",
    R"json("conversion")json",
    R"json("method")json",
    R"json("parameters")json",
    R"json("value")json",
    R"json("unit")json",
    R"json("subtype")json",
    R"json("axis")json",
    R"json("abbreviation")json",
    R"json("direction")json",
    R"json("semi_major_axis")json",
    R"json("inverse_flattening")json",
    R"json("semi_minor_axis")json",
    R"json("radius")json",
    R"json("longitude")json",
    R"json("conversion_factor")json",
    R"json("components")json",
    R"json("source_crs")json",
    R"json("target_crs")json",
    R"json("transformation")json",
    R"json("ids")json",
    R"json("meridian")json",
    R"json("geoid_model")json",
    R"json("interpolation_crs")json",
    R"json("anchor")json",
    R"json("frame_reference_epoch")json",
    R"json("deformation_models")json",
    R"json("parameter_file")json",
    R"json("version")json",
    R"json("authority_citation")json",
    R"json("uri")json",
    R"json("minimum_value")json",
    R"json("maximum_value")json",
    R"json("range_meaning")json",
    // Types.
    R"json("GeographicCRS")json",
    R"json("ProjectedCRS")json",
    R"json("GeodeticCRS")json",
    R"json("CompoundCRS")json",
    R"json("BoundCRS")json",
    R"json("EngineeringCRS")json",
    R"json("VerticalCRS")json",
    R"json("DerivedGeographicCRS")json",
    R"json("DerivedProjectedCRS")json",
    R"json("DerivedGeodeticCRS")json",
    R"json("DerivedEngineeringCRS")json",
    R"json("DerivedVerticalCRS")json",
    R"json("GeodeticReferenceFrame")json",
    R"json("DynamicGeodeticReferenceFrame")json",
    R"json("VerticalReferenceFrame")json",
    R"json("DynamicVerticalReferenceFrame")json",
    R"json("EngineeringDatum")json",
    R"json("Ellipsoid")json",
    R"json("Conversion")json",
    R"json("Transformation")json",
    R"json("LinearUnit")json",
    R"json("AngularUnit")json",
    R"json("ScaleUnit")json",
    R"json("Unit")json",
    // Kinds of coordinate system, directions, units that a name says all of.
    R"json("ellipsoidal")json",
    R"json("Cartesian")json",
    R"json("vertical")json",
    R"json("spherical")json",
    R"json("north")json",
    R"json("south")json",
    R"json("east")json",
    R"json("west")json",
    R"json("up")json",
    R"json("down")json",
    R"json("geocentricX")json",
    R"json("geocentricY")json",
    R"json("geocentricZ")json",
    R"json("degree")json",
    R"json("metre")json",
    R"json("unity")json",
    // Authorities; EPSG has a tag of its own.
    R"json("EPSG")json",
    R"json("ESRI")json",
    R"json("IAU_2015")json",
    R"json("IGNF")json",
    R"json("OGC")json",
    R"json("PROJ")json",
    R"json("NKG")json",
    R"json("LOCAL")json",
    // Axis names and abbreviations.
    R"json("Geodetic latitude")json",
    R"json("Geodetic longitude")json",
    R"json("Ellipsoidal height")json",
    R"json("Easting")json",
    R"json("Northing")json",
    R"json("Westing")json",
    R"json("Southing")json",
    R"json("Gravity-related height")json",
    R"json("Longitude")json",
    R"json("Latitude")json",
    R"json("Lat")json",
    R"json("Lon")json",
    R"json("Long")json",
    R"json("lat")json",
    R"json("lon")json",
    R"json("E")json",
    R"json("N")json",
    R"json("X")json",
    R"json("Y")json",
    R"json("Z")json",
    R"json("W")json",
    R"json("S")json",
    R"json("H")json",
    R"json("h")json",
    R"json("x")json",
    R"json("y")json",
    // Units.
    R"json({"type":"LinearUnit","name":"US survey foot","conversion_factor":0.30480060960121924,"id":{"authority":"EPSG","code":9003}})json",
    R"json({"type":"LinearUnit","name":"foot","conversion_factor":0.3048,"id":{"authority":"EPSG","code":9002}})json",
    R"json({"type":"AngularUnit","name":"Degree","conversion_factor":0.017453292519943295})json",
    R"json({"type":"AngularUnit","name":"grad","conversion_factor":0.01570796326794895,"id":{"authority":"EPSG","code":9105}})json",
    R"json({"type":"AngularUnit","name":"degree minute second hemisphere","conversion_factor":0.017453292519943295,"id":{"authority":"EPSG","code":9108}})json",
    R"json({"type":"AngularUnit","name":"grad","conversion_factor":0.01570796326794895})json",
    R"json({"type":"LinearUnit","name":"chain","conversion_factor":20.1168,"id":{"authority":"EPSG","code":9097}})json",
    R"json({"type":"LinearUnit","name":"Indian foot","conversion_factor":0.30479951024814694})json",
    R"json({"type":"LinearUnit","name":"German legal metre","conversion_factor":1.0000135965,"id":{"authority":"EPSG","code":9031}})json",
    R"json({"type":"LinearUnit","name":"Clarke's foot","conversion_factor":0.3047972654})json",
    R"json({"type":"LinearUnit","name":"Indian yard","conversion_factor":0.9143985307444408,"id":{"authority":"EPSG","code":9084}})json",
    R"json({"type":"LinearUnit","name":"Clarke's foot","conversion_factor":0.3047972654,"id":{"authority":"EPSG","code":9005}})json",
    R"json({"type":"LinearUnit","name":"US survey foot","conversion_factor":0.30480060960121924})json",
    // Operation methods.
    R"json({"name":"Transverse Mercator","id":{"authority":"EPSG","code":9807}})json",
    R"json({"name":"Lambert Conic Conformal (2SP)","id":{"authority":"EPSG","code":9802}})json",
    R"json({"name":"Lambert Conic Conformal (1SP)","id":{"authority":"EPSG","code":9801}})json",
    R"json({"name":"Equidistant Cylindrical","id":{"authority":"EPSG","code":1028}})json",
    R"json({"name":"Polar Stereographic (variant A)","id":{"authority":"EPSG","code":9810}})json",
    R"json({"name":"Sinusoidal","id":{"authority":"PROJ","code":"SINUSOIDAL"}})json",
    R"json({"name":"Mollweide","id":{"authority":"PROJ","code":"MOLLWEIDE"}})json",
    R"json({"name":"Robinson","id":{"authority":"PROJ","code":"ROBINSON"}})json",
    R"json({"name":"Orthographic","id":{"authority":"EPSG","code":9840}})json",
    R"json({"name":"Albers Equal Area","id":{"authority":"EPSG","code":9822}})json",
    R"json({"name":"Lambert Azimuthal Equal Area","id":{"authority":"EPSG","code":9820}})json",
    R"json({"name":"Colombia Urban","id":{"authority":"EPSG","code":1052}})json",
    R"json({"name":"Cassini-Soldner","id":{"authority":"EPSG","code":9806}})json",
    R"json({"name":"Hotine Oblique Mercator (variant A)","id":{"authority":"EPSG","code":9812}})json",
    R"json({"name":"Polar Stereographic (variant B)","id":{"authority":"EPSG","code":9829}})json",
    R"json({"name":"Transverse Mercator (South Orientated)","id":{"authority":"EPSG","code":9808}})json",
    R"json({"name":"Oblique Stereographic","id":{"authority":"EPSG","code":9809}})json",
    R"json({"name":"Equidistant Cylindrical (Spherical)","id":{"authority":"EPSG","code":1029}})json",
    R"json({"name":"Lambert Conic Conformal (West Orientated)","id":{"authority":"EPSG","code":9826}})json",
    R"json({"name":"Mercator (variant A)","id":{"authority":"EPSG","code":9804}})json",
    R"json({"name":"Hotine Oblique Mercator (variant B)","id":{"authority":"EPSG","code":9815}})json",
    R"json({"name":"Modified Azimuthal Equidistant","id":{"authority":"EPSG","code":9832}})json",
    R"json({"name":"American Polyconic","id":{"authority":"EPSG","code":9818}})json",
    R"json({"name":"Equal Earth","id":{"authority":"EPSG","code":1078}})json",
    R"json({"name":"Lambert Azimuthal Equal Area (Spherical)","id":{"authority":"EPSG","code":1027}})json",
    R"json({"name":"Gauss Schreiber Transverse Mercator","id":{"authority":"PROJ","code":"gstm"}})json",
    R"json({"name":"Popular Visualisation Pseudo Mercator","id":{"authority":"EPSG","code":1024}})json",
    R"json({"name":"Bonne","id":{"authority":"EPSG","code":9827}})json",
    R"json({"name":"Mercator (variant B)","id":{"authority":"EPSG","code":9805}})json",
    R"json({"name":"Krovak (North Orientated)","id":{"authority":"EPSG","code":1041}})json",
    R"json({"name":"Krovak","id":{"authority":"EPSG","code":9819}})json",
    R"json({"name":"Lambert Cylindrical Equal Area (Spherical)","id":{"authority":"EPSG","code":9834}})json",
    R"json({"name":"Lambert Conic Conformal (2SP Michigan)","id":{"authority":"EPSG","code":1051}})json",
    R"json({"name":"Polar Stereographic (variant C)","id":{"authority":"EPSG","code":9830}})json",
    R"json({"name":"Lambert Cylindrical Equal Area","id":{"authority":"EPSG","code":9835}})json",
    R"json({"name":"Laborde Oblique Mercator","id":{"authority":"EPSG","code":9813}})json",
    R"json({"name":"Bonne (South Orientated)","id":{"authority":"EPSG","code":9828}})json",
    R"json({"name":"Equidistant Cylindrical (Spherical)","id":{"authority":"EPSG","code":9823}})json",
    R"json({"name":"Krovak Modified","id":{"authority":"EPSG","code":1042}})json",
    R"json({"name":"Krovak Modified (North Orientated)","id":{"authority":"EPSG","code":1043}})json",
    R"json({"name":"Transverse Mercator Zoned Grid System","id":{"authority":"EPSG","code":9824}})json",
    R"json({"name":"Vertical Perspective","id":{"authority":"EPSG","code":9838}})json",
    R"json({"name":"Hyperbolic Cassini-Soldner","id":{"authority":"EPSG","code":9833}})json",
    R"json({"name":"Mercator (1SP) (Spherical)","id":{"authority":"EPSG","code":9841}})json",
    R"json({"name":"Guam Projection","id":{"authority":"EPSG","code":9831}})json",
    R"json({"name":"Transverse Mercator 3D","id":{"authority":"EPSG","code":1111}})json",
    R"json({"name":"Tunisia Mining Grid","id":{"authority":"EPSG","code":9816}})json",
    R"json({"name":"Lambert Conic Near-Conformal","id":{"authority":"EPSG","code":9817}})json",
    R"json({"name":"New Zealand Map Grid","id":{"authority":"EPSG","code":9811}})json",
    R"json({"name":"Lambert Conic Conformal (2SP Belgium)","id":{"authority":"EPSG","code":9803}})json",
    R"json({"name":"Equidistant Cylindrical","id":{"authority":"EPSG","code":9842}})json",
    R"json({"name":"Geocentric translations (geog2D domain)","id":{"authority":"EPSG","code":9603}})json",
    R"json({"name":"Position Vector transformation (geog2D domain)","id":{"authority":"EPSG","code":9606}})json",
    R"json({"name":"Coordinate Frame rotation (geog2D domain)","id":{"authority":"EPSG","code":9607}})json",
    R"json({"name":"NTv2","id":{"authority":"EPSG","code":9615}})json",
    R"json({"name":"Longitude rotation","id":{"authority":"EPSG","code":9601}})json",
    // Operation parameters.
    R"json({"name":"False easting","id":{"authority":"EPSG","code":8806}})json",
    R"json({"name":"False northing","id":{"authority":"EPSG","code":8807}})json",
    R"json({"name":"Longitude of natural origin","id":{"authority":"EPSG","code":8802}})json",
    R"json({"name":"Latitude of natural origin","id":{"authority":"EPSG","code":8801}})json",
    R"json({"name":"Scale factor at natural origin","id":{"authority":"EPSG","code":8805}})json",
    R"json({"name":"Latitude of 1st standard parallel","id":{"authority":"EPSG","code":8823}})json",
    R"json({"name":"Latitude of 2nd standard parallel","id":{"authority":"EPSG","code":8824}})json",
    R"json({"name":"Easting at false origin","id":{"authority":"EPSG","code":8826}})json",
    R"json({"name":"Northing at false origin","id":{"authority":"EPSG","code":8827}})json",
    R"json({"name":"Longitude of false origin","id":{"authority":"EPSG","code":8822}})json",
    R"json({"name":"Latitude of false origin","id":{"authority":"EPSG","code":8821}})json",
    R"json({"name":"Latitude of projection centre","id":{"authority":"EPSG","code":8811}})json",
    R"json({"name":"Projection plane origin height","id":{"authority":"EPSG","code":1039}})json",
    R"json({"name":"Scale factor on initial line","id":{"authority":"EPSG","code":8815}})json",
    R"json({"name":"Longitude of projection centre","id":{"authority":"EPSG","code":8812}})json",
    R"json({"name":"Azimuth of initial line","id":{"authority":"EPSG","code":8813}})json",
    R"json({"name":"Angle from Rectified to Skew Grid","id":{"authority":"EPSG","code":8814}})json",
    R"json({"name":"Longitude of origin","id":{"authority":"EPSG","code":8833}})json",
    R"json({"name":"Latitude of standard parallel","id":{"authority":"EPSG","code":8832}})json",
    R"json({"name":"Easting at projection centre","id":{"authority":"EPSG","code":8816}})json",
    R"json({"name":"Northing at projection centre","id":{"authority":"EPSG","code":8817}})json",
    R"json({"name":"Co-latitude of cone axis","id":{"authority":"EPSG","code":1036}})json",
    R"json({"name":"Latitude of pseudo standard parallel","id":{"authority":"EPSG","code":8818}})json",
    R"json({"name":"Scale factor on pseudo standard parallel","id":{"authority":"EPSG","code":8819}})json",
    R"json({"name":"Ellipsoid scaling factor","id":{"authority":"EPSG","code":1038}})json",
    R"json({"name":"Initial longitude","id":{"authority":"EPSG","code":8830}})json",
    R"json({"name":"Zone width","id":{"authority":"EPSG","code":8831}})json",
    R"json({"name":"Latitude of topocentric origin","id":{"authority":"EPSG","code":8834}})json",
    R"json({"name":"Longitude of topocentric origin","id":{"authority":"EPSG","code":8835}})json",
    R"json({"name":"Viewpoint height","id":{"authority":"EPSG","code":8840}})json",
    R"json({"name":"X-axis translation","id":{"authority":"EPSG","code":8605}})json",
    R"json({"name":"Y-axis translation","id":{"authority":"EPSG","code":8606}})json",
    R"json({"name":"Z-axis translation","id":{"authority":"EPSG","code":8607}})json",
    R"json({"name":"X-axis rotation","id":{"authority":"EPSG","code":8608}})json",
    R"json({"name":"Y-axis rotation","id":{"authority":"EPSG","code":8609}})json",
    R"json({"name":"Z-axis rotation","id":{"authority":"EPSG","code":8610}})json",
    R"json({"name":"Scale difference","id":{"authority":"EPSG","code":8611}})json",
    R"json({"name":"Latitude and longitude difference file","id":{"authority":"EPSG","code":8656}})json",
    R"json({"name":"Longitude offset","id":{"authority":"EPSG","code":8602}})json",
    // Ellipsoids.
    R"json({"name":"GRS 1980","semi_major_axis":6378137,"inverse_flattening":298.257222101,"id":{"authority":"EPSG","code":7019}})json",
    R"json({"name":"International 1924","semi_major_axis":6378388,"inverse_flattening":297,"id":{"authority":"EPSG","code":7022}})json",
    R"json({"name":"WGS 84","semi_major_axis":6378137,"inverse_flattening":298.257223563,"id":{"authority":"EPSG","code":7030}})json",
    R"json({"name":"Krassowsky 1940","semi_major_axis":6378245,"inverse_flattening":298.3,"id":{"authority":"EPSG","code":7024}})json",
    R"json({"name":"Clarke 1866","semi_major_axis":6378206.4,"semi_minor_axis":6356583.8,"id":{"authority":"EPSG","code":7008}})json",
    R"json({"name":"GSK-2011","semi_major_axis":6378136.5,"inverse_flattening":298.2564151,"id":{"authority":"EPSG","code":1025}})json",
    R"json({"name":"WGS 72","semi_major_axis":6378135,"inverse_flattening":298.26,"id":{"authority":"EPSG","code":7043}})json",
    R"json({"name":"Bessel 1841","semi_major_axis":6377397.155,"inverse_flattening":299.1528128,"id":{"authority":"EPSG","code":7004}})json",
    R"json({"name":"Clarke 1880 (RGS)","semi_major_axis":6378249.145,"inverse_flattening":293.465,"id":{"authority":"EPSG","code":7012}})json",
    R"json({"name":"Clarke 1880 (IGN)","semi_major_axis":6378249.2,"semi_minor_axis":6356515,"id":{"authority":"EPSG","code":7011}})json",
    R"json({"name":"Airy 1830","semi_major_axis":6377563.396,"inverse_flattening":299.3249646,"id":{"authority":"EPSG","code":7001}})json",
    R"json({"name":"CGCS2000","semi_major_axis":6378137,"inverse_flattening":298.257222101,"id":{"authority":"EPSG","code":1024}})json",
    R"json({"name":"IAG 1975","semi_major_axis":6378140,"inverse_flattening":298.257,"id":{"authority":"EPSG","code":7049}})json",
    R"json({"name":"Australian National Spheroid","semi_major_axis":6378160,"inverse_flattening":298.25,"id":{"authority":"EPSG","code":7003}})json",
    R"json({"name":"GRS 1967 Modified","semi_major_axis":6378160,"inverse_flattening":298.25,"id":{"authority":"EPSG","code":7050}})json",
    R"json({"name":"Everest 1830 (1937 Adjustment)","semi_major_axis":6377276.345,"inverse_flattening":300.8017,"id":{"authority":"EPSG","code":7015}})json",
    R"json({"name":"Bessel Modified","semi_major_axis":6377492.018,"inverse_flattening":299.1528128,"id":{"authority":"EPSG","code":7005}})json",
    R"json({"name":"Clarke 1880 (Arc)","semi_major_axis":6378249.145,"inverse_flattening":293.4663077,"id":{"authority":"EPSG","code":7013}})json",
    R"json({"name":"Everest (1830 Definition)","semi_major_axis":{"value":20922931.8,"unit":{"type":"LinearUnit","name":"Indian foot","conversion_factor":0.30479951024814694}},"semi_minor_axis":{"value":20853374.58,"unit":{"type":"LinearUnit","name":"Indian foot","conversion_factor":0.30479951024814694}},"id":{"authority":"EPSG","code":7042}})json",
    R"json({"name":"Indonesian National Spheroid","semi_major_axis":6378160,"inverse_flattening":298.247,"id":{"authority":"EPSG","code":7021}})json",
    R"json({"name":"GRS 1967","semi_major_axis":6378160,"inverse_flattening":298.247167427,"id":{"authority":"EPSG","code":7036}})json",
    R"json({"name":"Everest 1830 Modified","semi_major_axis":6377304.063,"inverse_flattening":300.8017,"id":{"authority":"EPSG","code":7018}})json",
    R"json({"name":"Plessis 1817","semi_major_axis":6376523,"inverse_flattening":308.64,"id":{"authority":"EPSG","code":7027}})json",
    R"json({"name":"Helmert 1906","semi_major_axis":6378200,"inverse_flattening":298.3,"id":{"authority":"EPSG","code":7020}})json",
    R"json({"name":"Everest 1830 (1975 Definition)","semi_major_axis":6377299.151,"inverse_flattening":300.8017255,"id":{"authority":"EPSG","code":7045}})json",
    R"json({"name":"Clarke 1858","semi_major_axis":{"value":20926348,"unit":{"type":"LinearUnit","name":"Clarke's foot","conversion_factor":0.3047972654}},"semi_minor_axis":{"value":20855233,"unit":{"type":"LinearUnit","name":"Clarke's foot","conversion_factor":0.3047972654}},"id":{"authority":"EPSG","code":7007}})json",
    R"json({"name":"Bessel Namibia (GLM)","semi_major_axis":{"value":6377397.155,"unit":{"type":"LinearUnit","name":"German legal metre","conversion_factor":1.0000135965}},"inverse_flattening":299.1528128,"id":{"authority":"EPSG","code":7046}})json",
    R"json({"name":"PZ-90","semi_major_axis":6378136,"inverse_flattening":298.257839303,"id":{"authority":"EPSG","code":7054}})json",
    R"json({"name":"Average Terrestrial System 1977","semi_major_axis":6378135,"inverse_flattening":298.257,"id":{"authority":"EPSG","code":7041}})json",
    R"json({"name":"Clarke 1866 Michigan","semi_major_axis":{"value":20926631.531,"unit":{"type":"LinearUnit","name":"US survey foot","conversion_factor":0.30480060960121924}},"semi_minor_axis":{"value":20855688.674,"unit":{"type":"LinearUnit","name":"US survey foot","conversion_factor":0.30480060960121924}},"id":{"authority":"EPSG","code":7009}})json",
    R"json({"name":"Everest 1830 (1967 Definition)","semi_major_axis":6377298.556,"inverse_flattening":300.8017,"id":{"authority":"EPSG","code":7016}})json",
    R"json({"name":"Everest 1830 (1962 Definition)","semi_major_axis":6377301.243,"inverse_flattening":300.8017255,"id":{"authority":"EPSG","code":7044}})json",
    // Coordinate systems.
    R"json({"subtype":"ellipsoidal","axis":[{"name":"Geodetic latitude","abbreviation":"Lat","direction":"north","unit":"degree"},{"name":"Geodetic longitude","abbreviation":"Lon","direction":"east","unit":"degree"}]})json",
    R"json({"subtype":"Cartesian","axis":[{"name":"Easting","abbreviation":"E","direction":"east","unit":"metre"},{"name":"Northing","abbreviation":"N","direction":"north","unit":"metre"}]})json",
    R"json({"subtype":"Cartesian","axis":[{"name":"Easting","abbreviation":"X","direction":"east","unit":"metre"},{"name":"Northing","abbreviation":"Y","direction":"north","unit":"metre"}]})json",
    R"json({"subtype":"Cartesian","axis":[{"name":"Easting","abbreviation":"X","direction":"east","unit":{"type":"LinearUnit","name":"US survey foot","conversion_factor":0.30480060960121924,"id":{"authority":"EPSG","code":9003}}},{"name":"Northing","abbreviation":"Y","direction":"north","unit":{"type":"LinearUnit","name":"US survey foot","conversion_factor":0.30480060960121924,"id":{"authority":"EPSG","code":9003}}}]})json",
    R"json({"subtype":"Cartesian","axis":[{"name":"Northing","abbreviation":"X","direction":"north","unit":"metre"},{"name":"Easting","abbreviation":"Y","direction":"east","unit":"metre"}]})json",
    R"json({"subtype":"ellipsoidal","axis":[{"name":"Geodetic longitude","abbreviation":"Lon","direction":"east","unit":"degree"},{"name":"Geodetic latitude","abbreviation":"Lat","direction":"north","unit":"degree"}]})json",
    R"json({"subtype":"vertical","axis":[{"name":"Gravity-related height","abbreviation":"H","direction":"up","unit":"metre"}]})json",
    R"json({"subtype":"Cartesian","axis":[{"name":"Geocentric X","abbreviation":"X","direction":"geocentricX","unit":"metre"},{"name":"Geocentric Y","abbreviation":"Y","direction":"geocentricY","unit":"metre"},{"name":"Geocentric Z","abbreviation":"Z","direction":"geocentricZ","unit":"metre"}]})json",
    R"json({"subtype":"Cartesian","axis":[{"name":"Northing","abbreviation":"N","direction":"north","unit":"metre"},{"name":"Easting","abbreviation":"E","direction":"east","unit":"metre"}]})json",
    R"json({"subtype":"ellipsoidal","axis":[{"name":"Geodetic latitude","abbreviation":"Lat","direction":"north","unit":"degree"},{"name":"Geodetic longitude","abbreviation":"Lon","direction":"west","unit":"degree"}]})json",
    R"json({"subtype":"Cartesian","axis":[{"name":"Easting","abbreviation":"X","direction":"east","unit":{"type":"LinearUnit","name":"foot","conversion_factor":0.3048,"id":{"authority":"EPSG","code":9002}}},{"name":"Northing","abbreviation":"Y","direction":"north","unit":{"type":"LinearUnit","name":"foot","conversion_factor":0.3048,"id":{"authority":"EPSG","code":9002}}}]})json",
    R"json({"subtype":"Cartesian","axis":[{"name":"Westing","abbreviation":"W","direction":"west","unit":"metre"},{"name":"Northing","abbreviation":"N","direction":"north","unit":"metre"}]})json",
    R"json({"subtype":"ellipsoidal","axis":[{"name":"Geodetic latitude","abbreviation":"Lat","direction":"north","unit":"degree"},{"name":"Geodetic longitude","abbreviation":"Lon","direction":"east","unit":"degree"},{"name":"Ellipsoidal height","abbreviation":"h","direction":"up","unit":"metre"}]})json",
    R"json({"subtype":"spherical","axis":[{"name":"Planetocentric latitude","abbreviation":"U","direction":"north","unit":"degree"},{"name":"Planetocentric longitude","abbreviation":"V","direction":"east","unit":"degree"}]})json",
    // Prime meridians.
    R"json({"name":"Paris","longitude":{"value":2.5969213,"unit":{"type":"AngularUnit","name":"grad","conversion_factor":0.01570796326794895}},"id":{"authority":"EPSG","code":8903}})json",
    R"json({"name":"Reference_Meridian","longitude":0,"id":{"authority":"ESRI","code":108900}})json",
};
// clang-format on

/// The beginning of a value, which is cheap to compare. Most values that are not entries differ from all entries in it.
std::string beginningOf(const Projjson& value)
{
    if (value.is_string())
        return value.get<std::string>();
    if (!value.is_object() || value.empty())
        return {};
    const auto first = value.begin();
    return first.key() + '=' + (first->is_string() ? first->get_ref<const std::string&>() : std::string());
}

struct Vocabulary {
    std::vector<Projjson> entries;
    std::unordered_set<std::string> beginnings;
    std::unordered_map<std::string, std::size_t> numbers; // by compact JSON text

    Vocabulary()
    {
        for (const std::string_view json : kEntries) {
            entries.push_back(Projjson::parse(json));
            beginnings.insert(beginningOf(entries.back()));
            numbers.emplace(entries.back().dump(), entries.size() - 1);
        }
    }
};

const Vocabulary& vocabulary()
{
    static const Vocabulary instance;
    return instance;
}

} // namespace

std::optional<std::size_t> vocabularyNumber(const Projjson& value)
{
    if (!(value.is_string() || value.is_object()) || !vocabulary().beginnings.contains(beginningOf(value)))
        return std::nullopt;
    const auto found = vocabulary().numbers.find(value.dump());
    return found == vocabulary().numbers.end() ? std::nullopt : std::optional(found->second);
}

const Projjson* vocabularyEntry(std::size_t number)
{
    const auto& entries = vocabulary().entries;
    return number < entries.size() ? &entries[number] : nullptr;
}

} // namespace Embedded
