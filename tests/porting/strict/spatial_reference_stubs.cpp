// A spatial-reference library with no catalog and no memory. It is sufficient to link the module.
#include "platform/spatial_reference.h"

namespace Zentara::Infrastructure::SpatialReference {

namespace {

/// Returns no object and the status.
template <class T>
Status returnNone(T*& object, Status status)
{
    object = nullptr;
    return status;
}

} // namespace

Object::~Object() = default;
DefinitionBase::~DefinitionBase() = default;
EllipsoidDefinition::~EllipsoidDefinition() = default;
DatumDefinition::~DatumDefinition() = default;
CoordinateReferenceSystemDefinition::~CoordinateReferenceSystemDefinition() = default;
DefinitionBaseArray::~DefinitionBaseArray() = default;
DefinitionStream::~DefinitionStream() = default;
CoordinateReferenceSystemOperation::~CoordinateReferenceSystemOperation() = default;

void Object::Destroy(const Object* object)
{
    delete object;
}

Status DefinitionBase::GetCode(const wchar_t*&) const
{
    return statusFailed;
}

Status DatumDefinition::GetEllipsoidCode(const wchar_t*&) const
{
    return statusFailed;
}
Status DatumDefinition::SetEllipsoid(const EllipsoidDefinition*)
{
    return statusFailed;
}

Status CoordinateReferenceSystemDefinition::Load(const wchar_t*, CoordinateReferenceSystemDefinition*& definition)
{
    return returnNone(definition, statusNotFound);
}
Status CoordinateReferenceSystemDefinition::GetKind(int&) const
{
    return statusFailed;
}
Status CoordinateReferenceSystemDefinition::GetDatumCode(const wchar_t*&) const
{
    return statusFailed;
}
Status CoordinateReferenceSystemDefinition::GetEllipsoidCode(const wchar_t*&) const
{
    return statusFailed;
}
Status CoordinateReferenceSystemDefinition::GetDatum(DatumDefinition*& datum) const
{
    return returnNone(datum, statusNotFound);
}
Status CoordinateReferenceSystemDefinition::SetDatum(const DatumDefinition*)
{
    return statusFailed;
}
Status CoordinateReferenceSystemDefinition::SetEllipsoid(const EllipsoidDefinition*)
{
    return statusFailed;
}

Status DefinitionBaseArray::CreateInstance(DefinitionBaseArray*& array)
{
    return returnNone(array, statusOutOfMemory);
}
int DefinitionBaseArray::GetCount() const
{
    return 0;
}
Status DefinitionBaseArray::Add(DefinitionBase*)
{
    return statusOutOfMemory;
}
DefinitionBase* DefinitionBaseArray::Remove(int)
{
    return nullptr;
}

Status DefinitionStream::CreateInstance(DefinitionStream*& stream)
{
    return returnNone(stream, statusOutOfMemory);
}
Status DefinitionStream::Add(const DefinitionBase*)
{
    return statusOutOfMemory;
}
Status DefinitionStream::Write(unsigned char*, std::size_t&, SerializationFormat, int) const
{
    return statusFailed;
}
Status DefinitionStream::Read(const unsigned char*, std::size_t, SerializationFormat, int)
{
    return statusFailed;
}
Status DefinitionStream::GetDefinitions(DefinitionBaseArray*& definitions) const
{
    return returnNone(definitions, statusOutOfMemory);
}
Status DefinitionStream::Serialize_s(const DefinitionBase*, unsigned char*, std::uint64_t, SerializationFormat, int,
                                     bool)
{
    return statusFailed;
}
Status DefinitionStream::Deserialize_s(DefinitionBaseArray*& definitions, const unsigned char*, std::uint64_t,
                                       SerializationFormat, int)
{
    return returnNone(definitions, statusFailed);
}

Status FormatConverter::DefinitionToWkt_s(const CoordinateReferenceSystemDefinition*, WktFlavor, wchar_t*, std::size_t)
{
    return statusFailed;
}

Status CoordinateReferenceSystemOperation::Load(const CoordinateReferenceSystemDefinition*,
                                                CoordinateReferenceSystemOperation*& operation)
{
    return returnNone(operation, statusFailed);
}
Status CoordinateReferenceSystemOperation::IsDatumBased(bool&) const
{
    return statusFailed;
}

Status CoordinateReferenceSystemUtil::GetEllipsoid(const CoordinateReferenceSystemDefinition*,
                                                   EllipsoidDefinition*& ellipsoid)
{
    return returnNone(ellipsoid, statusNotFound);
}

GeodeticTransformationDefinition::~GeodeticTransformationDefinition() = default;
Status GeodeticTransformationDefinition::Load(const wchar_t*, GeodeticTransformationDefinition*& definition)
{
    return returnNone(definition, statusNotFound);
}
Status GeodeticTransformationDefinition::IsReversible(bool&) const
{
    return statusFailed;
}

GeodeticPathDefinition::~GeodeticPathDefinition() = default;
Status GeodeticPathDefinition::Load(const wchar_t*, GeodeticPathDefinition*& definition)
{
    return returnNone(definition, statusNotFound);
}
Status GeodeticPathDefinition::IsReversible(bool&) const
{
    return statusFailed;
}

TransformationInfo::~TransformationInfo() = default;
Status TransformationInfo::CreateInstance(TransformationInfo*& info)
{
    return returnNone(info, statusOutOfMemory);
}
Status TransformationInfo::SetName(const wchar_t*)
{
    return statusFailed;
}
Status TransformationInfo::SetKind(int)
{
    return statusFailed;
}

} // namespace Zentara::Infrastructure::SpatialReference
