#include "platform/spatial_reference/transformation.h"

#include <string>

#include "embedded/spatial_reference/catalog/catalog_operations.h"
#include "embedded/spatial_reference/definitions/library_call.h"

namespace Zentara::Infrastructure::SpatialReference {

using Embedded::DefinitionType;
using Embedded::injectedStatus;

namespace {

template <typename Definition>
Status loadOperationDefinition(const wchar_t* codeOrName, DefinitionType type, Definition*& definition)
{
    return Embedded::loadDefinition(definition, [&] { return Embedded::loadOperation(codeOrName, type); });
}

} // namespace

GeodeticTransformationDefinition::GeodeticTransformationDefinition(DefinitionData* data) : DefinitionBase(data)
{
}
GeodeticTransformationDefinition::~GeodeticTransformationDefinition() = default;

Status GeodeticTransformationDefinition::Load(const wchar_t* codeOrName, GeodeticTransformationDefinition*& definition)
{
    definition = nullptr;
    if (const auto failure = injectedStatus("GeodeticTransformationDefinition::Load", statusOutOfMemory))
        return *failure;
    return loadOperationDefinition(codeOrName, DefinitionType::transformation, definition);
}

Status GeodeticTransformationDefinition::IsReversible(bool& answer) const
{
    if (const auto failure = injectedStatus("GeodeticTransformationDefinition::IsReversible"))
        return *failure;
    answer = data().reversible;
    return statusOk;
}

GeodeticPathDefinition::GeodeticPathDefinition(DefinitionData* data) : DefinitionBase(data)
{
}
GeodeticPathDefinition::~GeodeticPathDefinition() = default;

Status GeodeticPathDefinition::Load(const wchar_t* codeOrName, GeodeticPathDefinition*& definition)
{
    definition = nullptr;
    if (const auto failure = injectedStatus("GeodeticPathDefinition::Load", statusOutOfMemory))
        return *failure;
    return loadOperationDefinition(codeOrName, DefinitionType::path, definition);
}

Status GeodeticPathDefinition::IsReversible(bool& answer) const
{
    if (const auto failure = injectedStatus("GeodeticPathDefinition::IsReversible"))
        return *failure;
    answer = data().reversible;
    return statusOk;
}

struct TransformationInfoData {
    std::wstring name;
    int kind = transformationNone;
};

TransformationInfo::TransformationInfo() : data_(new TransformationInfoData)
{
}

TransformationInfo::~TransformationInfo()
{
    delete data_;
}

Status TransformationInfo::CreateInstance(TransformationInfo*& info)
{
    info = nullptr;
    if (const auto failure = injectedStatus("TransformationInfo::CreateInstance", statusOutOfMemory))
        return *failure;
    info = new TransformationInfo;
    return statusOk;
}

const wchar_t* TransformationInfo::GetName() const
{
    return data_->name.c_str();
}

Status TransformationInfo::SetName(const wchar_t* name)
{
    if (const auto failure = injectedStatus("TransformationInfo::SetName", statusOutOfMemory))
        return *failure;
    data_->name = name ? name : L"";
    return statusOk;
}

int TransformationInfo::GetKind() const
{
    return data_->kind;
}

Status TransformationInfo::SetKind(int kind)
{
    if (const auto failure = injectedStatus("TransformationInfo::SetKind"))
        return *failure;
    if (kind < transformationNone || kind > transformationSingle)
        return statusInvalidArgument;
    data_->kind = kind;
    return statusOk;
}

} // namespace Zentara::Infrastructure::SpatialReference
