// Where a configuration text is cut into items.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

namespace Orvel {

/// Cuts off everything up to and including the next "</Item>" and returns it; nothing, and `remaining` as it was, when
/// there is none.
[[nodiscard]] std::optional<std::wstring_view> TakeItemChunk(std::wstring_view& remaining);

/// Every chunk in order, as parts of `text`; what follows the last "</Item>" belongs to none.
[[nodiscard]] std::vector<std::wstring_view> SplitIntoItemChunks(std::wstring_view text);

} // namespace Orvel
