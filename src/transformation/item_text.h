// The text of one configuration item, read without copying it.
#pragma once

#include <optional>
#include <string_view>

namespace Orvel {

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
[[nodiscard]] ItemText ParseItemText(std::wstring_view text);

} // namespace Orvel
