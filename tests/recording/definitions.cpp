// Definitions of the recording library, which a test describes.
#include "embedded/diagnostics/resource_counters.h"
#include "recording/recorded_call.h"

namespace Zentara::Infrastructure::SpatialReference {

using Tests::Recording::Definition;
using Tests::Recording::Type;

namespace {

using Tests::Recording::answers;
using Tests::Recording::formatArgument;
using Tests::Recording::record;
using Tests::Recording::recordCreation;

Status textQuery(const std::string& name, const DefinitionBase* definition, const std::wstring& value,
                 const wchar_t*& output)
{
    const Status status = record(name, {formatArgument(definition)});
    output = value.c_str();
    return status;
}

/// Finds a definition of the class in the catalog.
template <class Class>
Status load(const std::string& name, const wchar_t* code, Class*& definition)
{
    const auto found = answers().catalog.find(code != nullptr ? code : L"");
    const bool isThere = found != answers().catalog.end();
    const Status status = recordCreation(name, {formatArgument(code)}, definition, [&] {
        return isThere ? dynamic_cast<Class*>(Tests::Recording::newDefinition(found->second)) : nullptr;
    });
    return isThere || status != statusOk ? status : statusNotFound;
}

} // namespace

Object::Object()
{
    Embedded::ResourceCounters::add(Embedded::ResourceKind::libraryObject);
}

Object::~Object()
{
    Embedded::ResourceCounters::remove(Embedded::ResourceKind::libraryObject);
}

void Object::Destroy(const Object* object)
{
    delete object;
}

DefinitionBase::DefinitionBase(DefinitionData* data) : data_(data)
{
}

DefinitionBase::~DefinitionBase()
{
    delete data_;
}

Status DefinitionBase::GetCode(const wchar_t*& code) const
{
    return textQuery("DefinitionBase::GetCode", this, data_->definition.code, code);
}

EllipsoidDefinition::EllipsoidDefinition(DefinitionData* data) : DefinitionBase(data)
{
}

EllipsoidDefinition::~EllipsoidDefinition() = default;

DatumDefinition::DatumDefinition(DefinitionData* data) : DefinitionBase(data)
{
}

DatumDefinition::~DatumDefinition() = default;

Status DatumDefinition::GetEllipsoidCode(const wchar_t*& code) const
{
    return textQuery("DatumDefinition::GetEllipsoidCode", this, data().definition.ellipsoidCode, code);
}

Status DatumDefinition::SetEllipsoid(const EllipsoidDefinition* ellipsoid)
{
    return record("DatumDefinition::SetEllipsoid", {formatArgument(this), formatArgument(ellipsoid)});
}

using System = CoordinateReferenceSystemDefinition;

System::CoordinateReferenceSystemDefinition(DefinitionData* data) : DefinitionBase(data)
{
}

System::~CoordinateReferenceSystemDefinition() = default;

Status System::Load(const wchar_t* code, CoordinateReferenceSystemDefinition*& definition)
{
    return load("CoordinateReferenceSystemDefinition::Load", code, definition);
}

Status System::GetKind(int& kind) const
{
    const Status status = record("CoordinateReferenceSystemDefinition::GetKind", {formatArgument(this)});
    kind = data().definition.kind;
    return status;
}

Status System::GetDatumCode(const wchar_t*& code) const
{
    return textQuery("CoordinateReferenceSystemDefinition::GetDatumCode", this, data().definition.datumCode, code);
}

Status System::GetEllipsoidCode(const wchar_t*& code) const
{
    return textQuery("CoordinateReferenceSystemDefinition::GetEllipsoidCode", this, data().definition.ellipsoidCode,
                     code);
}

Status System::GetDatum(DatumDefinition*& datum) const
{
    const Definition& own = data().definition;
    return recordCreation("CoordinateReferenceSystemDefinition::GetDatum", {formatArgument(this)}, datum, [&] {
        return new DatumDefinition(
            new DefinitionData{{.type = Type::datum, .code = own.datumCode, .ellipsoidCode = own.ellipsoidCode}});
    });
}

Status System::SetDatum(const DatumDefinition* datum)
{
    return record("CoordinateReferenceSystemDefinition::SetDatum", {formatArgument(this), formatArgument(datum)});
}

Status System::SetEllipsoid(const EllipsoidDefinition* ellipsoid)
{
    return record("CoordinateReferenceSystemDefinition::SetEllipsoid",
                  {formatArgument(this), formatArgument(ellipsoid)});
}

struct OperationData {
    bool datumBased;
};

using Operation = CoordinateReferenceSystemOperation;

Operation::CoordinateReferenceSystemOperation(OperationData* data) : data_(data)
{
}

Operation::~CoordinateReferenceSystemOperation()
{
    delete data_;
}

Status Operation::Load(const CoordinateReferenceSystemDefinition* definition,
                       CoordinateReferenceSystemOperation*& operation)
{
    return recordCreation("CoordinateReferenceSystemOperation::Load", {formatArgument(definition)}, operation, [&] {
        return new Operation(new OperationData{!definition->data().definition.datumCode.empty()});
    });
}

Status Operation::IsDatumBased(bool& answer) const
{
    const Status status = record("CoordinateReferenceSystemOperation::IsDatumBased", {});
    answer = data_->datumBased;
    return status;
}

Status CoordinateReferenceSystemUtil::GetEllipsoid(const CoordinateReferenceSystemDefinition* definition,
                                                   EllipsoidDefinition*& ellipsoid)
{
    return recordCreation("CoordinateReferenceSystemUtil::GetEllipsoid", {formatArgument(definition)}, ellipsoid, [&] {
        return new EllipsoidDefinition(
            new DefinitionData{{.type = Type::ellipsoid, .code = definition->data().definition.ellipsoidCode}});
    });
}

GeodeticTransformationDefinition::GeodeticTransformationDefinition(DefinitionData* data) : DefinitionBase(data)
{
}

GeodeticTransformationDefinition::~GeodeticTransformationDefinition() = default;

Status GeodeticTransformationDefinition::Load(const wchar_t* codeOrName, GeodeticTransformationDefinition*& definition)
{
    return load("GeodeticTransformationDefinition::Load", codeOrName, definition);
}

Status GeodeticTransformationDefinition::IsReversible(bool& answer) const
{
    const Status status = record("GeodeticTransformationDefinition::IsReversible", {formatArgument(this)});
    answer = data().definition.reversible;
    return status;
}

GeodeticPathDefinition::GeodeticPathDefinition(DefinitionData* data) : DefinitionBase(data)
{
}

GeodeticPathDefinition::~GeodeticPathDefinition() = default;

Status GeodeticPathDefinition::Load(const wchar_t* codeOrName, GeodeticPathDefinition*& definition)
{
    return load("GeodeticPathDefinition::Load", codeOrName, definition);
}

Status GeodeticPathDefinition::IsReversible(bool& answer) const
{
    const Status status = record("GeodeticPathDefinition::IsReversible", {formatArgument(this)});
    answer = data().definition.reversible;
    return status;
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
    return recordCreation("TransformationInfo::CreateInstance", {}, info, [] { return new TransformationInfo; });
}

const wchar_t* TransformationInfo::GetName() const
{
    return data_->name.c_str();
}

Status TransformationInfo::SetName(const wchar_t* name)
{
    const Status status = record("TransformationInfo::SetName", {formatArgument(name)});
    data_->name = name;
    return status;
}

int TransformationInfo::GetKind() const
{
    return data_->kind;
}

Status TransformationInfo::SetKind(int kind)
{
    const Status status = record("TransformationInfo::SetKind", {std::to_string(kind)});
    data_->kind = kind;
    return status;
}

} // namespace Zentara::Infrastructure::SpatialReference
