#include "platform/spatial_reference/operation.h"

#include <utility>

#include "embedded/spatial_reference/definitions/library_call.h"
#include "embedded/spatial_reference/projjson/definition_data.h"

namespace Zentara::Infrastructure::SpatialReference {

struct OperationData {
    bool datumBased;
};

CoordinateReferenceSystemOperation::CoordinateReferenceSystemOperation(OperationData* data) : data_(data)
{
}

CoordinateReferenceSystemOperation::~CoordinateReferenceSystemOperation()
{
    delete data_;
}

Status CoordinateReferenceSystemOperation::Load(const CoordinateReferenceSystemDefinition* definition,
                                                CoordinateReferenceSystemOperation*& operation)
{
    operation = nullptr;
    if (const auto failure = Embedded::injectedStatus("CoordinateReferenceSystemOperation::Load", statusOutOfMemory))
        return *failure;
    if (!definition)
        return statusInvalidArgument;
    operation = Embedded::makeObject<CoordinateReferenceSystemOperation>(
        OperationData{.datumBased = !definition->data().datumCode.empty()});
    return statusOk;
}

Status CoordinateReferenceSystemOperation::IsDatumBased(bool& answer) const
{
    if (const auto failure = Embedded::injectedStatus("CoordinateReferenceSystemOperation::IsDatumBased"))
        return *failure;
    answer = data_->datumBased;
    return statusOk;
}

Status CoordinateReferenceSystemUtil::GetEllipsoid(const CoordinateReferenceSystemDefinition* definition,
                                                   EllipsoidDefinition*& ellipsoid)
{
    ellipsoid = nullptr;
    if (const auto failure = Embedded::injectedStatus("CoordinateReferenceSystemUtil::GetEllipsoid"))
        return *failure;
    if (!definition)
        return statusInvalidArgument;
    auto part = Embedded::ellipsoidData(definition->data());
    if (!part)
        return statusNotFound;
    ellipsoid = Embedded::makeObject<EllipsoidDefinition>(*std::move(part));
    return statusOk;
}

} // namespace Zentara::Infrastructure::SpatialReference
