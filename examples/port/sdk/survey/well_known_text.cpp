#include "fields.h"
#include "formats.h"

#include <sstream>

namespace Survey {
namespace {

std::string inQuotes(const std::string& name)
{
    std::string text = "\"";
    for (const char character : name)
        text += character == '"' ? std::string("\"\"") : std::string(1, character);
    return text + '"';
}

std::string geographicPart(const System& system, const Ellipsoid& ellipsoid, const std::optional<Datum>& datum)
{
    const std::string datumName = datum ? datum->name : "Not specified";
    const std::string name = system.kind == SystemKind::geographic ? system.name : datumName;
    return "GEOGCS[" + inQuotes(name) + ",DATUM[" + inQuotes(datumName) + ",SPHEROID[" + inQuotes(ellipsoid.name) +
           "," + toDecimal(ellipsoid.semiMajorAxis) + "," + toDecimal(ellipsoid.inverseFlattening) +
           "]],PRIMEM[\"Greenwich\",0],UNIT[\"degree\",0.0174532925199433]]";
}

std::string projectionPart(const std::string& projection)
{
    std::istringstream parts(projection);
    std::string part;
    parts >> part;
    std::string text = "PROJECTION[" + inQuotes(part) + "]";
    while (parts >> part) {
        const std::size_t equals = part.find('=');
        if (equals != std::string::npos)
            text += ",PARAMETER[" + inQuotes(part.substr(0, equals)) + "," + part.substr(equals + 1) + "]";
    }
    return text;
}

} // namespace

Answer writeWellKnownText(const System& system, std::string& text)
{
    if (system.kind == SystemKind::local) {
        text = "LOCAL_CS[" + inQuotes(system.name) + ",LOCAL_DATUM[\"Local\",32767],UNIT[\"metre\",1]," +
               "AXIS[\"X\",EAST],AXIS[\"Y\",NORTH]]";
        return Answer::ok;
    }
    const auto ellipsoid = ellipsoidUnder(system);
    if (!ellipsoid)
        return Answer::unknown;
    const auto datum = datumUnder(system);
    text = geographicPart(system, *ellipsoid, datum);
    if (system.kind == SystemKind::projected)
        text = "PROJCS[" + inQuotes(system.name) + "," + text + "," + projectionPart(system.projection) +
               ",UNIT[\"metre\",1]]";
    return datum ? Answer::ok : Answer::lossy;
}

} // namespace Survey
