#include "transformation/item_text.h"

#include "storage/byte_block.h"

namespace Orvel {
namespace {

constexpr std::wstring_view kOpening = L"<Item>";
constexpr std::wstring_view kClosing = L"</Item>";
constexpr std::wstring_view kBlanks = L" \t\n\v\f\r"; // the characters that isspace accepts

std::wstring_view trim(std::wstring_view text)
{
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::wstring_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(kBlanks) + 1 - first);
}

/// The two tags cannot overlap. The text between them may be empty.
bool isElement(std::wstring_view text)
{
    return text.starts_with(kOpening) && text.ends_with(kClosing);
}

/// The position of the first tag of that name that begins with "<" or "</". It does not build the tag as a string: a
/// text can have a million items, and each is searched ten times.
std::size_t findTag(std::wstring_view text, std::wstring_view beginning, std::wstring_view name)
{
    std::size_t at = text.find(beginning);
    for (; at != std::wstring_view::npos; at = text.find(beginning, at + 1)) {
        const std::wstring_view rest = text.substr(at + beginning.size());
        if (rest.starts_with(name) && rest.substr(name.size()).starts_with(L'>'))
            break;
    }
    return at;
}

bool extract(std::wstring_view text, std::wstring_view tag, std::optional<std::wstring_view>& field)
{
    std::wstring_view value;
    if (ExtractElementText(text, tag, value) != 0)
        return false;
    field = value;
    return true;
}

int parseType(std::wstring_view text)
{
    if (text == L"1")
        return 1;
    return text == L"2" ? 2 : 0;
}

ByteBlock::Mask equalBytes(const wchar_t* left, const wchar_t* right, std::size_t offset)
{
    const auto* const leftBytes = reinterpret_cast<const unsigned char*>(left);
    const auto* const rightBytes = reinterpret_cast<const unsigned char*>(right);
    return ByteBlock::equalBytes(ByteBlock::load(leftBytes + offset), ByteBlock::load(rightBytes + offset));
}

/// Removes the text from the beginning of `rest`. False when it does not begin with it. Blocks are compared, the last
/// of which overlaps the one before: a call of memcmp takes longer than that for so few characters.
template <std::size_t size>
bool skip(std::wstring_view& rest, const wchar_t (&text)[size])
{
    constexpr std::size_t length = size - 1; // without the NUL
    constexpr std::size_t lastBlock = length * sizeof(wchar_t) - ByteBlock::kBytes;
    if (rest.size() < length)
        return false;
    ByteBlock::Mask equal = equalBytes(rest.data(), text, lastBlock);
    for (std::size_t offset = 0; offset < lastBlock; offset += ByteBlock::kBytes)
        equal &= equalBytes(rest.data(), text, offset);
    if (equal != ByteBlock::kAllBytes)
        return false;
    rest.remove_prefix(length);
    return true;
}

/// Removes the text up to the next "<", or the whole text, and returns it.
std::wstring_view takeValue(std::wstring_view& rest)
{
    std::size_t length = 0; // of some characters, which a loop finds sooner than wmemchr
    while (length < rest.size() && rest[length] != L'<')
        ++length;
    const std::wstring_view value = rest.substr(0, length);
    rest.remove_prefix(length);
    return value;
}

} // namespace

std::optional<std::wstring_view> takeItemChunk(std::wstring_view& remaining)
{
    const std::size_t marker = remaining.find(kClosing);
    if (marker == std::wstring_view::npos)
        return std::nullopt;
    const std::wstring_view chunk = remaining.substr(0, marker + kClosing.size());
    remaining.remove_prefix(chunk.size());
    return chunk;
}

std::vector<std::wstring_view> SplitIntoItemChunks(std::wstring_view text)
{
    std::vector<std::wstring_view> chunks;
    while (const std::optional<std::wstring_view> chunk = takeItemChunk(text))
        chunks.push_back(*chunk);
    return chunks;
}

int ExtractElementText(std::wstring_view text, std::wstring_view tag, std::wstring_view& value)
{
    const std::size_t openingLength = tag.size() + 2;
    const std::size_t start = findTag(text, L"<", tag);
    const std::size_t end = findTag(text, L"</", tag);
    if (start == std::wstring_view::npos || end == std::wstring_view::npos)
        return -1;
    const std::size_t span = end - start; // wraps round on purpose when the closing tag comes first
    if (openingLength > span)
        return -1;
    value = text.substr(start + openingLength, span - openingLength);
    return 0;
}

bool takeWrittenItem(std::wstring_view& remaining, ItemText& item)
{
    std::wstring_view rest = remaining;
    while (!rest.empty() && rest.front() != L'<' && kBlanks.find(rest.front()) != std::wstring_view::npos)
        rest.remove_prefix(1);
    if (!skip(rest, L"<Item><Version>"))
        return false;
    takeValue(rest);
    if (!skip(rest, L"</Version><SourceCs>"))
        return false;
    item.sourceCs = takeValue(rest);
    if (!skip(rest, L"</SourceCs><TargetCs>"))
        return false;
    item.targetCs = takeValue(rest);
    if (!skip(rest, L"</TargetCs><Name>"))
        return false;
    item.name = takeValue(rest);
    if (!skip(rest, L"</Name><Type>"))
        return false;
    item.type = parseType(takeValue(rest));
    if (!skip(rest, L"</Type><Note>"))
        return false;
    item.note = takeValue(rest);
    if (!skip(rest, L"</Note></Item>"))
        return false;
    remaining = rest;
    return true;
}

bool takeItem(std::wstring_view& remaining, ItemText& item)
{
    if (takeWrittenItem(remaining, item))
        return true;
    const std::optional<std::wstring_view> chunk = takeItemChunk(remaining);
    if (!chunk)
        return false;
    item = parseItemText(*chunk);
    return true;
}

ItemText parseItemText(std::wstring_view text)
{
    const std::wstring_view element = trim(text);
    ItemText item;
    std::optional<std::wstring_view> type;
    if (isElement(element) && extract(element, L"SourceCs", item.sourceCs) &&
        extract(element, L"TargetCs", item.targetCs) && extract(element, L"Name", item.name) &&
        extract(element, L"Type", type) && extract(element, L"Note", item.note))
        item.type = parseType(*type);
    return item;
}

} // namespace Orvel
