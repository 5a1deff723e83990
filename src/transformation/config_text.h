// The texts that the module hands to its callers: host strings, or one empty text that is nobody's to release.
#pragma once

#include <cstddef>

#include "storage/host_holders.h"

namespace Orvel {

/// What an out-parameter points at where there is no text.
[[nodiscard]] wchar_t* sharedEmptyText();

/// Room for a text of so many characters, its NUL included, all zero; empty without memory.
[[nodiscard]] HostString newConfigText(std::size_t characters);

} // namespace Orvel
