#include "platform/spatial_reference/operation.h"

#include <memory>

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
    auto data = std::make_unique<OperationData>(OperationData{.datumBased = !definition->data().datumCode.empty()});
    operation = new CoordinateReferenceSystemOperation(data.get());
    static_cast<void>(data.release()); // the operation has taken it over
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
    auto found = Embedded::ellipsoidDataOf(definition->data());
    if (!found)
        return statusNotFound;
    ellipsoid = Embedded::newDefinitionOf<EllipsoidDefinition>(*std::move(found));
    return statusOk;
}

} // namespace Zentara::Infrastructure::SpatialReference
