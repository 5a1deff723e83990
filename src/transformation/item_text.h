// The text of a transformation configuration, read without copying it: cut into items, and each into its fields.
// See docs/formats/transformation-configuration.md.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

namespace Orvel {

/// Cuts off everything up to and including the next "</Item>" and returns it; nothing, and `remaining` as it was, when
/// there is none.
[[nodiscard]] std::optional<std::wstring_view> takeItemChunk(std::wstring_view& remaining);

/// Every chunk in order, as parts of `text`; what follows the last "</Item>" belongs to none.
[[nodiscard]] std::vector<std::wstring_view> SplitIntoItemChunks(std::wstring_view text);

/// Finds what stands between the first "<tag>" and the first "</tag>" of the text, wherever both are. On 0 `value` is
/// that part of the text; a closing tag that stands before the opening one makes it run to the text's end. On -1 (a tag
/// is missing, or they overlap) it is untouched. Nothing is trimmed or unescaped.
[[nodiscard]] int ExtractElementText(std::wstring_view text, std::wstring_view tag, std::wstring_view& value);

/// What an item's text says, as parts of that text. A field is absent from the first one on that the text lacks.
struct ItemText {
    std::optional<std::wstring_view> sourceCs;
    std::optional<std::wstring_view> targetCs;
    std::optional<std::wstring_view> name;
    std::optional<std::wstring_view> note;
    std::optional<int> type; // present only when every field is
};

/// All absent unless the text, blanks around it aside, is one "<Item>…</Item>".
[[nodiscard]] ItemText parseItemText(std::wstring_view text);

} // namespace Orvel
