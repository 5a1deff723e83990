// What can be asked of a coordinate reference system as an operation, and its ellipsoid.
#pragma once

#include "definition.h"

namespace Zentara::Infrastructure::SpatialReference {

struct OperationData;

class ZSR_API CoordinateReferenceSystemOperation final : public Object {
public:
    explicit CoordinateReferenceSystemOperation(OperationData* data);
    /// On success `operation` is new and the caller's; otherwise null.
    static Status Load(const CoordinateReferenceSystemDefinition* definition,
                       CoordinateReferenceSystemOperation*& operation);
    /// Whether the system refers to the Earth through a datum of its own (false: through an ellipsoid alone).
    Status IsDatumBased(bool& answer) const;

protected:
    ~CoordinateReferenceSystemOperation() override;

private:
    OperationData* data_;
};

class ZSR_API CoordinateReferenceSystemUtil {
public:
    /// The ellipsoid of the system, through its datum or its own; new and the caller's. statusNotFound for kind 1.
    static Status GetEllipsoid(const CoordinateReferenceSystemDefinition* definition, EllipsoidDefinition*& ellipsoid);
};

} // namespace Zentara::Infrastructure::SpatialReference
