// The texts that a definition of the spatial-reference library answers.
#pragma once

#include <optional>
#include <string>

#include "platform/spatial_reference.h"

namespace Orvelcs {

template <class Owner>
using TextQuery = Zentara::Infrastructure::SpatialReference::Status (Owner::*)(const wchar_t*&) const;

/// Nothing where the query fails or is answered with an empty text, the library's way of saying that there is none.
template <class Definition, class Owner>
std::optional<std::wstring> answerOf(const Definition& definition, TextQuery<Owner> query)
{
    const wchar_t* text = nullptr;
    if ((definition.*query)(text) != Zentara::Infrastructure::SpatialReference::statusOk || text == nullptr ||
        *text == L'\0')
        return std::nullopt;
    return text;
}

} // namespace Orvelcs
