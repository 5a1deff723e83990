// A second reader of the definition xrecord, written from docs/formats/definition-xrecord.md.
#pragma once

#include <optional>
#include <string>

#include "support/chain.h"

namespace Fuzz {

using Tests::Bytes;
using Tests::Item;
using Tests::Items;

/// The codes of the definitions that were found. Datum and ellipsoid may be missing.
struct FoundCodes {
    std::optional<std::wstring> system{};
    std::optional<std::wstring> datum{};
    std::optional<std::wstring> ellipsoid{};
    friend bool operator==(const FoundCodes&, const FoundCodes&) = default;
};

/// Nothing if the chain does not hold a system with that code.
std::optional<FoundCodes> referenceDefinitions(const Items& chain, const std::wstring& code);

} // namespace Fuzz
