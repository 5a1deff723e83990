// Names of result codes.
#pragma once

#include <string>

#include "orvelcs/cli/failure.h"
#include "platform/host/error_status.h"
#include "platform/spatial_reference/status.h"

namespace Orvelcs {

ResultCode resultCode(Qeapp::ErrorStatus result);
ResultCode resultCode(Zentara::Infrastructure::SpatialReference::Status status);

/// "eVetoed (325)"; a code without a name is "result (99)".
std::string resultName(Qeapp::ErrorStatus result);
/// "statusUnreadable (43)"; a status without a name is "status (99)".
std::string statusName(Zentara::Infrastructure::SpatialReference::Status status);

} // namespace Orvelcs
