// Queries of a coordinate reference system: whether it has a datum, and its ellipsoid.
#pragma once

#include "definition.h"

namespace Zentara::Infrastructure::SpatialReference {

struct OperationData;

class ZSR_API CoordinateReferenceSystemOperation final : public Object {
public:
    explicit CoordinateReferenceSystemOperation(OperationData* data);
    /// On success `operation` is new and the caller owns it. Otherwise it is null.
    static Status Load(const CoordinateReferenceSystemDefinition* definition,
                       CoordinateReferenceSystemOperation*& operation);
    /// Returns whether the system has a datum of its own. False for a system that has only an ellipsoid.
    Status IsDatumBased(bool& answer) const;

protected:
    ~CoordinateReferenceSystemOperation() override;

private:
    OperationData* data_;
};

class ZSR_API CoordinateReferenceSystemUtil {
public:
    /// The ellipsoid of the system's datum, or its own. It is new and the caller owns it. Returns statusNotFound for
    /// kind 1.
    static Status GetEllipsoid(const CoordinateReferenceSystemDefinition* definition, EllipsoidDefinition*& ellipsoid);
};

} // namespace Zentara::Infrastructure::SpatialReference
