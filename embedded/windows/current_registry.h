// The registry that the calls of this process work on.
#pragma once

#include "embedded/windows/registry_journal.h"

namespace Embedded {

RegistryJournal& currentRegistry();

} // namespace Embedded
