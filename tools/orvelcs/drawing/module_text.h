// Texts that functions of the module hand out in host buffers.
#pragma once

#include <optional>
#include <string>

#include "storage/host_holders.h"

namespace Orvelcs {

/// A copy of what `read` hands out, whose buffer is released; nothing when it answers false.
template <class Read>
std::optional<std::wstring> copyModuleText(const Read& read)
{
    wchar_t* text = nullptr;
    if (!read(text))
        return std::nullopt;
    const Orvel::HostString owned(text);
    return text;
}

} // namespace Orvelcs
