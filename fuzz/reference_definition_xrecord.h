// The definition xrecord read once more, plainly, as docs/formats/definition-xrecord.md says it is read.
#pragma once

#include <optional>
#include <string>

#include "support/chain.h"

namespace Fuzz {

using Tests::Bytes;
using Tests::Item;
using Tests::Items;

/// The codes of what was found; datum and ellipsoid may be missing.
struct FoundCodes {
    std::optional<std::wstring> system{};
    std::optional<std::wstring> datum{};
    std::optional<std::wstring> ellipsoid{};
    friend bool operator==(const FoundCodes&, const FoundCodes&) = default;
};

/// Nothing where the chain does not hold the system of that code.
std::optional<FoundCodes> referenceDefinitions(const Items& chain, const std::wstring& code);

} // namespace Fuzz
