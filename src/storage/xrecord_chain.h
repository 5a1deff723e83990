// The chain of whatever object may be an xrecord.
#pragma once

#include "platform/host.h"

namespace Orvel {

/// On true `chain` is a copy of the xrecord's chain, null for an empty one, to be released with qeutRelRb. False, and
/// `chain` untouched, when the object cannot be opened, is no xrecord or cannot give its chain.
[[nodiscard]] bool ReadXrecordChain(QeDbObjectId id, resbuf*& chain);

} // namespace Orvel
