#include "platform/spatial_reference/definition.h"

#include "embedded/base/text.h"
#include "embedded/spatial_reference/catalog/catalog_loader.h"
#include "embedded/spatial_reference/definitions/library_call.h"
#include "embedded/spatial_reference/definitions/user_text.h"

namespace Zentara::Infrastructure::SpatialReference {

using Embedded::DefinitionType;
using Embedded::injectedStatus;

namespace {

template <typename Definition>
Status loadByCode(const wchar_t* code, DefinitionType type, Definition*& definition)
{
    return Embedded::loadDefinition(definition, [&] { return Embedded::loadFromCatalog(code, type); });
}

} // namespace

DefinitionBase::DefinitionBase(DefinitionData* data) : data_(data)
{
}

DefinitionBase::~DefinitionBase()
{
    delete data_;
}

Status DefinitionBase::GetCode(const wchar_t*& code) const
{
    if (const auto failure = injectedStatus("DefinitionBase::GetCode"))
        return *failure;
    code = data().code.c_str();
    return statusOk;
}

Status DefinitionBase::GetName(const wchar_t*& name) const
{
    if (const auto failure = injectedStatus("DefinitionBase::GetName"))
        return *failure;
    name = data().name.c_str();
    return statusOk;
}

EllipsoidDefinition::EllipsoidDefinition(DefinitionData* data) : DefinitionBase(data)
{
}
EllipsoidDefinition::~EllipsoidDefinition() = default;

Status EllipsoidDefinition::Load(const wchar_t* code, EllipsoidDefinition*& definition)
{
    definition = nullptr;
    if (const auto failure = injectedStatus("EllipsoidDefinition::Load", statusOutOfMemory))
        return *failure;
    return loadByCode(code, DefinitionType::ellipsoid, definition);
}

Status EllipsoidDefinition::GetSemiMajorAxisInMetres(double& value) const
{
    if (const auto failure = injectedStatus("EllipsoidDefinition::GetSemiMajorAxisInMetres"))
        return *failure;
    value = Embedded::semiMajorAxisInMetres(data().projjson());
    return statusOk;
}

Status EllipsoidDefinition::GetInverseFlattening(double& value) const
{
    if (const auto failure = injectedStatus("EllipsoidDefinition::GetInverseFlattening"))
        return *failure;
    value = Embedded::inverseFlattening(data().projjson());
    return statusOk;
}

DatumDefinition::DatumDefinition(DefinitionData* data) : DefinitionBase(data)
{
}
DatumDefinition::~DatumDefinition() = default;

Status DatumDefinition::Load(const wchar_t* code, DatumDefinition*& definition)
{
    definition = nullptr;
    if (const auto failure = injectedStatus("DatumDefinition::Load", statusOutOfMemory))
        return *failure;
    return loadByCode(code, DefinitionType::datum, definition);
}

Status DatumDefinition::GetEllipsoidCode(const wchar_t*& code) const
{
    if (const auto failure = injectedStatus("DatumDefinition::GetEllipsoidCode"))
        return *failure;
    code = data().ellipsoidCode.c_str();
    return statusOk;
}

Status DatumDefinition::GetEllipsoid(EllipsoidDefinition*& ellipsoid) const
{
    ellipsoid = nullptr;
    if (const auto failure = injectedStatus("DatumDefinition::GetEllipsoid"))
        return *failure;
    auto part = Embedded::ellipsoidData(data());
    if (!part)
        return statusNotFound;
    ellipsoid = Embedded::makeObject<EllipsoidDefinition>(*std::move(part));
    return statusOk;
}

Status DatumDefinition::SetEllipsoid(const EllipsoidDefinition* ellipsoid)
{
    if (const auto failure = injectedStatus("DatumDefinition::SetEllipsoid"))
        return *failure;
    if (!ellipsoid)
        return statusInvalidArgument;
    return Embedded::setEllipsoid(data(), ellipsoid->data()) ? statusOk : statusUnsupported;
}

CoordinateReferenceSystemDefinition::CoordinateReferenceSystemDefinition(DefinitionData* data) : DefinitionBase(data)
{
}
CoordinateReferenceSystemDefinition::~CoordinateReferenceSystemDefinition() = default;

Status CoordinateReferenceSystemDefinition::Load(const wchar_t* code, CoordinateReferenceSystemDefinition*& definition)
{
    definition = nullptr;
    if (const auto failure = injectedStatus("CoordinateReferenceSystemDefinition::Load", statusOutOfMemory))
        return *failure;
    return loadByCode(code, DefinitionType::coordinateReferenceSystem, definition);
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
    return Embedded::catchJsonErrors(statusUnreadable, [&] {
        const std::string codeUtf8 = Embedded::utf8FromWide(code);
        auto projjson = Embedded::parseUserText(Embedded::utf8FromWide(text), codeUtf8);
        if (!projjson)
            return Embedded::statusOf(projjson.error());
        definition = Embedded::makeObject<CoordinateReferenceSystemDefinition>(
            DefinitionData(DefinitionType::coordinateReferenceSystem, codeUtf8, *std::move(projjson)));
        return statusOk;
    });
}

Status CoordinateReferenceSystemDefinition::GetKind(int& kind) const
{
    if (const auto failure = injectedStatus("CoordinateReferenceSystemDefinition::GetKind"))
        return *failure;
    kind = *data().kind; // every system has one
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
    auto part = Embedded::datumData(data());
    if (!part)
        return statusNotFound;
    datum = Embedded::makeObject<DatumDefinition>(*std::move(part));
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
