// Which parts the host has at the moment.
#pragma once

#include "embedded/host/application/application.h"

namespace QeHost {

Embedded::HostParts& hostParts();

} // namespace QeHost
