#include "platform/spatial_reference/definition.h"

#include "embedded/spatial_reference/catalog/catalog_loader.h"
#include "embedded/spatial_reference/definitions/outcome.h"

namespace Zentara::Infrastructure::SpatialReference {

using Embedded::DefinitionType;
using Embedded::guarded;
using Embedded::injectedStatus;

namespace {

template <typename Definition>
Status loadDefinition(const wchar_t* code, DefinitionType type, Definition*& definition)
{
    return guarded(statusFailed, [&] {
        auto [status, data] = Embedded::loadFromCatalog(code, type);
        if (data)
            definition = Embedded::newDefinitionOf<Definition>(*std::move(data));
        return status;
    });
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
    return loadDefinition(code, DefinitionType::ellipsoid, definition);
}

Status EllipsoidDefinition::GetSemiMajorAxisInMetres(double& value) const
{
    if (const auto failure = injectedStatus("EllipsoidDefinition::GetSemiMajorAxisInMetres"))
        return *failure;
    value = Embedded::semiMajorAxisInMetres(data().document);
    return statusOk;
}

Status EllipsoidDefinition::GetInverseFlattening(double& value) const
{
    if (const auto failure = injectedStatus("EllipsoidDefinition::GetInverseFlattening"))
        return *failure;
    value = Embedded::inverseFlattening(data().document);
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
    return loadDefinition(code, DefinitionType::datum, definition);
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
    auto found = Embedded::ellipsoidDataOf(data());
    if (!found)
        return statusNotFound;
    ellipsoid = Embedded::newDefinitionOf<EllipsoidDefinition>(*std::move(found));
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

} // namespace Zentara::Infrastructure::SpatialReference
