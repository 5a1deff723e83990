#include "embedded/base/text.h"
#include "embedded/spatial_reference/catalog/catalog_loader.h"
#include "embedded/spatial_reference/definitions/outcome.h"
#include "embedded/spatial_reference/definitions/user_text.h"
#include "platform/spatial_reference/definition.h"

namespace Zentara::Infrastructure::SpatialReference {

using Embedded::DefinitionType;
using Embedded::guarded;
using Embedded::injectedStatus;

CoordinateReferenceSystemDefinition::CoordinateReferenceSystemDefinition(DefinitionData* data) : DefinitionBase(data)
{
}
CoordinateReferenceSystemDefinition::~CoordinateReferenceSystemDefinition() = default;

Status CoordinateReferenceSystemDefinition::Load(const wchar_t* code, CoordinateReferenceSystemDefinition*& definition)
{
    definition = nullptr;
    if (const auto failure = injectedStatus("CoordinateReferenceSystemDefinition::Load", statusOutOfMemory))
        return *failure;
    return guarded(statusFailed, [&] {
        auto [status, data] = Embedded::loadFromCatalog(code, DefinitionType::coordinateReferenceSystem);
        if (data)
            definition = Embedded::newDefinitionOf<CoordinateReferenceSystemDefinition>(*std::move(data));
        return status;
    });
}

Status CoordinateReferenceSystemDefinition::CreateFromText(const wchar_t* text, const wchar_t* code,
                                                           CoordinateReferenceSystemDefinition*& definition)
{
    definition = nullptr;
    if (const auto failure = injectedStatus("CoordinateReferenceSystemDefinition::CreateFromText", statusOutOfMemory))
        return *failure;
    if (!code || !*code || !Embedded::isWellFormed(code))
        return statusInvalidArgument;
    if (!text)
        return statusNullText;
    return guarded(statusUnreadable, [&] {
        const std::string codeUtf8 = Embedded::utf8FromWide(code);
        auto document = Embedded::documentFromUserText(Embedded::utf8FromWide(text), codeUtf8);
        if (!document)
            return statusUnreadable;
        definition = Embedded::newDefinitionOf<CoordinateReferenceSystemDefinition>(
            DefinitionData(DefinitionType::coordinateReferenceSystem, codeUtf8, *std::move(document)));
        return statusOk;
    });
}

Status CoordinateReferenceSystemDefinition::GetKind(int& kind) const
{
    if (const auto failure = injectedStatus("CoordinateReferenceSystemDefinition::GetKind"))
        return *failure;
    kind = data().kind;
    return statusOk;
}

Status CoordinateReferenceSystemDefinition::GetDatumCode(const wchar_t*& code) const
{
    if (const auto failure = injectedStatus("CoordinateReferenceSystemDefinition::GetDatumCode"))
        return *failure;
    code = data().datumCode.c_str();
    return statusOk;
}

Status CoordinateReferenceSystemDefinition::GetEllipsoidCode(const wchar_t*& code) const
{
    if (const auto failure = injectedStatus("CoordinateReferenceSystemDefinition::GetEllipsoidCode"))
        return *failure;
    code = data().ellipsoidCode.c_str();
    return statusOk;
}

Status CoordinateReferenceSystemDefinition::GetDatum(DatumDefinition*& datum) const
{
    datum = nullptr;
    if (const auto failure = injectedStatus("CoordinateReferenceSystemDefinition::GetDatum"))
        return *failure;
    auto found = Embedded::datumDataOf(data());
    if (!found)
        return statusNotFound;
    datum = Embedded::newDefinitionOf<DatumDefinition>(*std::move(found));
    return statusOk;
}

Status CoordinateReferenceSystemDefinition::SetDatum(const DatumDefinition* datum)
{
    if (const auto failure = injectedStatus("CoordinateReferenceSystemDefinition::SetDatum"))
        return *failure;
    if (!datum)
        return statusInvalidArgument;
    return Embedded::setDatum(data(), datum->data()) ? statusOk : statusUnsupported;
}

Status CoordinateReferenceSystemDefinition::SetEllipsoid(const EllipsoidDefinition* ellipsoid)
{
    if (const auto failure = injectedStatus("CoordinateReferenceSystemDefinition::SetEllipsoid"))
        return *failure;
    if (!ellipsoid)
        return statusInvalidArgument;
    return Embedded::setEllipsoid(data(), ellipsoid->data()) ? statusOk : statusUnsupported;
}

} // namespace Zentara::Infrastructure::SpatialReference
