#include "embedded/spatial_reference/projjson/definition_data.h"

#include <utility>

#include "embedded/base/text.h"
#include "platform/spatial_reference/definition.h"

namespace Zentara::Infrastructure::SpatialReference {

using Embedded::DefinitionType;
using Embedded::Projjson;
using Embedded::wideFromUtf8;

DefinitionData::DefinitionData(DefinitionType definitionType, std::string definitionCode, Projjson definitionProjjson)
    : type(definitionType),
      codeUtf8(std::move(definitionCode)),
      code(wideFromUtf8(codeUtf8)),
      projjson_(std::make_shared<const Projjson>(std::move(definitionProjjson)))
{
    derive();
}

void DefinitionData::setProjjson(Projjson changed)
{
    projjson_ = std::make_shared<const Projjson>(std::move(changed));
    derive();
}

void DefinitionData::derive()
{
    name = wideFromUtf8(Embedded::nameOf(projjson()));
    if (type == DefinitionType::coordinateReferenceSystem)
        kind = Embedded::systemKind(projjson());
    const Projjson* datum = datumNode();
    datumCode = datum ? wideFromUtf8(Embedded::codeOf(*datum)) : std::wstring();
    const Projjson* ellipsoid = ellipsoidNode();
    ellipsoidCode = ellipsoid ? wideFromUtf8(Embedded::codeOf(*ellipsoid)) : std::wstring();
}

const Projjson* DefinitionData::datumNode() const
{
    if (type != DefinitionType::coordinateReferenceSystem || kind == kindNotEarthReferenced)
        return nullptr;
    const Projjson* datum = Embedded::memberOf(Embedded::geodeticSystem(projjson()), "datum");
    return datum && !Embedded::isUnspecifiedDatum(*datum) ? datum : nullptr;
}

const Projjson* DefinitionData::ellipsoidNode() const
{
    if (type == DefinitionType::datum)
        return Embedded::memberOf(projjson(), "ellipsoid");
    if (type != DefinitionType::coordinateReferenceSystem)
        return nullptr;
    const Projjson* datum = Embedded::memberOf(Embedded::geodeticSystem(projjson()), "datum");
    return datum ? Embedded::memberOf(*datum, "ellipsoid") : nullptr;
}

} // namespace Zentara::Infrastructure::SpatialReference

namespace Embedded {
namespace {

using namespace Zentara::Infrastructure::SpatialReference;

/// The node with its type in front. PROJJSON leaves the type out where it follows from the place of the node.
Projjson standalone(const Projjson& node, const char* type)
{
    Projjson projjson{{"type", type}};
    projjson.update(node);
    return projjson;
}

Projjson withoutType(Projjson projjson)
{
    projjson.erase("type");
    return projjson;
}

} // namespace

std::optional<DefinitionData> datumData(const DefinitionData& definition)
{
    const Projjson* datum = definition.datumNode();
    if (!datum)
        return std::nullopt;
    return DefinitionData(DefinitionType::datum, codeOf(*datum), standalone(*datum, "GeodeticReferenceFrame"));
}

std::optional<DefinitionData> ellipsoidData(const DefinitionData& definition)
{
    const Projjson* ellipsoid = definition.ellipsoidNode();
    if (!ellipsoid)
        return std::nullopt;
    return DefinitionData(DefinitionType::ellipsoid, codeOf(*ellipsoid), standalone(*ellipsoid, "Ellipsoid"));
}

bool setEllipsoid(DefinitionData& definition, const DefinitionData& ellipsoid)
{
    Projjson changed = definition.projjson();
    const bool isDatum = definition.type == DefinitionType::datum;
    const Projjson* datum = isDatum ? &changed : memberOf(geodeticSystem(changed), "datum");
    if (!datum || !memberOf(*datum, "ellipsoid"))
        return false;
    Projjson& place = isDatum ? changed : geodeticSystem(changed)["datum"];
    place["ellipsoid"] = withoutType(ellipsoid.projjson());
    definition.setProjjson(std::move(changed));
    return true;
}

bool setDatum(DefinitionData& definition, const DefinitionData& datum)
{
    Projjson changed = definition.projjson();
    Projjson& system = geodeticSystem(changed);
    const Projjson* present = memberOf(system, "datum");
    if (!present || !memberOf(*present, "ellipsoid"))
        return false;
    system["datum"] = datum.projjson();
    definition.setProjjson(std::move(changed));
    return true;
}

} // namespace Embedded
