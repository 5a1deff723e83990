// Which parts the host has at the moment.
#pragma once

#include "embedded/host/application.h"

namespace QeHost {

Embedded::HostParts& hostParts();

} // namespace QeHost
