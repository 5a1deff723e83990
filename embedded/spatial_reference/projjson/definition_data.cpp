#include "embedded/spatial_reference/projjson/definition_data.h"

#include <utility>

#include "embedded/base/text.h"
#include "platform/spatial_reference/transformation.h"

namespace Zentara::Infrastructure::SpatialReference {

using Embedded::DefinitionType;
using Embedded::Projjson;
using Embedded::wideFromUtf8;

DefinitionData::DefinitionData(DefinitionType definitionType, std::string definitionCode, Projjson definitionDocument)
    : type(definitionType),
      codeUtf8(std::move(definitionCode)),
      document(std::move(definitionDocument)),
      code(wideFromUtf8(codeUtf8))
{
    derive();
}

void DefinitionData::setDocument(Projjson changed)
{
    document = std::move(changed);
    derive();
}

void DefinitionData::derive()
{
    name = wideFromUtf8(Embedded::nameOf(document));
    if (type == DefinitionType::coordinateReferenceSystem)
        kind = Embedded::kindOf(document);
    const Projjson* datum = datumNode();
    datumCode = datum ? wideFromUtf8(Embedded::codeOf(*datum)) : std::wstring();
    const Projjson* ellipsoid = ellipsoidNode();
    ellipsoidCode = ellipsoid ? wideFromUtf8(Embedded::codeOf(*ellipsoid)) : std::wstring();
}

const Projjson* DefinitionData::datumNode() const
{
    if (type != DefinitionType::coordinateReferenceSystem || kind == kindNotEarthReferenced)
        return nullptr;
    const Projjson* datum = Embedded::memberOf(Embedded::geodeticNode(document), "datum");
    return datum && !Embedded::isUnspecifiedDatum(*datum) ? datum : nullptr;
}

const Projjson* DefinitionData::ellipsoidNode() const
{
    if (type == DefinitionType::datum)
        return Embedded::memberOf(document, "ellipsoid");
    if (type != DefinitionType::coordinateReferenceSystem)
        return nullptr;
    const Projjson* datum = Embedded::memberOf(Embedded::geodeticNode(document), "datum");
    return datum ? Embedded::memberOf(*datum, "ellipsoid") : nullptr;
}

} // namespace Zentara::Infrastructure::SpatialReference

namespace Embedded {
namespace {

using namespace Zentara::Infrastructure::SpatialReference;

/// The node as a document: with its type in front, which PROJJSON leaves out where the place says it.
Projjson standalone(const Projjson& node, const char* type)
{
    Projjson document{{"type", type}};
    document.update(node);
    return document;
}

Projjson withoutType(Projjson document)
{
    document.erase("type");
    return document;
}

} // namespace

std::optional<DefinitionData> datumDataOf(const DefinitionData& definition)
{
    const Projjson* datum = definition.datumNode();
    if (!datum)
        return std::nullopt;
    return DefinitionData(DefinitionType::datum, codeOf(*datum), standalone(*datum, "GeodeticReferenceFrame"));
}

std::optional<DefinitionData> ellipsoidDataOf(const DefinitionData& definition)
{
    const Projjson* ellipsoid = definition.ellipsoidNode();
    if (!ellipsoid)
        return std::nullopt;
    return DefinitionData(DefinitionType::ellipsoid, codeOf(*ellipsoid), standalone(*ellipsoid, "Ellipsoid"));
}

bool setEllipsoid(DefinitionData& definition, const DefinitionData& ellipsoid)
{
    Projjson changed = definition.document;
    const bool isDatum = definition.type == DefinitionType::datum;
    const Projjson* datum = isDatum ? &changed : memberOf(geodeticNode(changed), "datum");
    if (!datum || !memberOf(*datum, "ellipsoid"))
        return false;
    Projjson& place = isDatum ? changed : geodeticNode(changed)["datum"];
    place["ellipsoid"] = withoutType(ellipsoid.document);
    definition.setDocument(std::move(changed));
    return true;
}

bool setDatum(DefinitionData& definition, const DefinitionData& datum)
{
    Projjson changed = definition.document;
    Projjson& system = geodeticNode(changed);
    const Projjson* present = memberOf(system, "datum");
    if (!present || !memberOf(*present, "ellipsoid"))
        return false;
    system["datum"] = datum.document;
    definition.setDocument(std::move(changed));
    return true;
}

DefinitionBase* newDefinition(DefinitionData data)
{
    switch (data.type) {
    case DefinitionType::coordinateReferenceSystem:
        return newDefinitionOf<CoordinateReferenceSystemDefinition>(std::move(data));
    case DefinitionType::datum:
        return newDefinitionOf<DatumDefinition>(std::move(data));
    case DefinitionType::ellipsoid:
        return newDefinitionOf<EllipsoidDefinition>(std::move(data));
    case DefinitionType::transformation:
        return newDefinitionOf<GeodeticTransformationDefinition>(std::move(data));
    case DefinitionType::path:
        return newDefinitionOf<GeodeticPathDefinition>(std::move(data));
    }
    return nullptr;
}

} // namespace Embedded
