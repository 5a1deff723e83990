// The text of a transformation configuration, read without copying it: cut into items, and each into its fields.
// See docs/formats/transformation-configuration.md.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

namespace Orvel {

/// Removes the text up to and including the next "</Item>" from `remaining` and returns it. Without one it returns no
/// value and leaves `remaining` unchanged.
[[nodiscard]] std::optional<std::wstring_view> takeItemChunk(std::wstring_view& remaining);

/// Every chunk in order, as parts of `text`. The text after the last "</Item>" belongs to no chunk.
[[nodiscard]] std::vector<std::wstring_view> SplitIntoItemChunks(std::wstring_view text);

/// Finds the part of the text between the first "<tag>" and the first "</tag>", wherever both are. On 0 `value` is that
/// part; it ends at the end of the text when the closing tag comes before the opening one. On -1 (a tag is missing, or
/// they overlap) `value` is unchanged. Trims and unescapes nothing.
[[nodiscard]] int ExtractElementText(std::wstring_view text, std::wstring_view tag, std::wstring_view& value);

/// The fields of an item, as parts of its text. When the text lacks a field, that field and those after it have no
/// value.
struct ItemText {
    std::optional<std::wstring_view> sourceCs;
    std::optional<std::wstring_view> targetCs;
    std::optional<std::wstring_view> name;
    std::optional<std::wstring_view> note;
    std::optional<int> type; // has a value only when every field has one
};

/// Removes the next chunk from `remaining` and sets the item to what parseItemText gives for it. False, and `remaining`
/// unchanged, when there is none.
[[nodiscard]] bool takeItem(std::wstring_view& remaining, ItemText& item);

/// Does the same for an item as the module writes it, in one walk from tag to tag, which takes a tenth of the time of
/// searching for each tag. False, and `remaining` unchanged, for any other text.
[[nodiscard]] bool takeWrittenItem(std::wstring_view& remaining, ItemText& item);

/// No field has a value unless the text is one "<Item>…</Item>". Blanks around it are ignored.
[[nodiscard]] ItemText parseItemText(std::wstring_view text);

} // namespace Orvel
