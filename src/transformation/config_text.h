// The configuration texts that the module returns to its callers: host strings, or one shared empty text.
#pragma once

#include <cstddef>

#include "storage/host_holders.h"

namespace Orvel {

/// The value of an out-parameter where there is no text. Nobody releases it.
[[nodiscard]] wchar_t* sharedEmptyText();

/// A buffer for a text of so many characters, its NUL included, all zero. Empty when memory is short.
[[nodiscard]] HostString newConfigText(std::size_t characters);

} // namespace Orvel
