#include "transformation/reference_item_parser.h"

namespace Tests::Reference {
namespace {

constexpr int kNowhere = -1;
constexpr int kLow16Bits = 65536;

int intLength(const std::wstring& text)
{
    return static_cast<int>(text.size());
}

std::wstring copyRange(const std::wstring& text, int from, int to)
{
    std::wstring part;
    for (int at = from; at < to; ++at)
        part.push_back(text[static_cast<std::size_t>(at)]);
    return part;
}

bool hasAt(const std::wstring& text, int at, const std::wstring& mark)
{
    const int length = intLength(text);
    for (const wchar_t character : mark) {
        if (at >= length || text[static_cast<std::size_t>(at)] != character)
            return false;
        ++at;
    }
    return true;
}

int findFirst(const std::wstring& text, const std::wstring& mark, int from)
{
    const int last = intLength(text) - intLength(mark);
    for (int at = from; at <= last; ++at) {
        if (hasAt(text, at, mark))
            return at;
    }
    return kNowhere;
}

bool isBlank(wchar_t character)
{
    return character == 0x20 || (character >= 0x09 && character <= 0x0D);
}

std::wstring trimmed(std::wstring text)
{
    while (!text.empty() && isBlank(text.front()))
        text.erase(0, 1);
    while (!text.empty() && isBlank(text.back()))
        text.pop_back();
    return text;
}

/// Finds the value of an element. Returns false when there is none.
bool findValue(const std::wstring& text, const std::wstring& tag, std::wstring& value)
{
    const std::wstring openingTag = L"<" + tag + L">";
    const int opening = findFirst(text, openingTag, 0);
    const int closing = findFirst(text, L"</" + tag + L">", 0);
    if (opening == kNowhere || closing == kNowhere)
        return false;
    const int behindOpening = opening + intLength(openingTag);
    if (closing > opening && closing < behindOpening)
        return false;
    value = copyRange(text, behindOpening, closing < opening ? intLength(text) : closing);
    return true;
}

std::wstring element(const std::wstring& tag, const std::wstring& content)
{
    return L"<" + tag + L">" + content + L"</" + tag + L">";
}

int signedLow16Bits(int type)
{
    const int low = ((type % kLow16Bits) + kLow16Bits) % kLow16Bits;
    return low < kLow16Bits / 2 ? low : low - kLow16Bits;
}

} // namespace

void readItem(const std::wstring& text, ItemFields& item)
{
    const std::wstring rest = trimmed(text);
    const int length = intLength(rest);
    if (length <= 13 || !hasAt(rest, 0, L"<Item>") || !hasAt(rest, length - 7, L"</Item>"))
        return;
    std::wstring type;
    std::wstring note;
    if (!findValue(rest, L"SourceCs", item.source) || !findValue(rest, L"TargetCs", item.target) ||
        !findValue(rest, L"Name", item.name) || !findValue(rest, L"Type", type) || !findValue(rest, L"Note", note))
        return;
    item.note = note;
    item.type = type == L"1" ? 1 : type == L"2" ? 2 : 0;
}

std::vector<ItemFields> readConfiguration(const std::wstring& text)
{
    std::vector<ItemFields> items;
    int at = 0;
    for (;;) {
        const int closing = findFirst(text, L"</Item>", at);
        if (closing == kNowhere)
            return items;
        ItemFields item;
        readItem(copyRange(text, at, closing + 7), item);
        items.push_back(item);
        at = closing + 7;
    }
}

std::wstring writeItem(const ItemFields& item)
{
    const bool complete = !item.source.empty() && !item.target.empty() && !item.name.empty() && item.type != 0;
    if (!complete)
        return L"";
    return element(L"Item", element(L"Version", item.version) + element(L"SourceCs", item.source) +
                                element(L"TargetCs", item.target) + element(L"Name", item.name) +
                                element(L"Type", std::to_wstring(signedLow16Bits(item.type))) +
                                element(L"Note", item.note));
}

std::wstring writeConfiguration(const std::vector<ItemFields>& items)
{
    std::wstring text;
    for (const ItemFields& item : items)
        text += writeItem(item);
    return text;
}

} // namespace Tests::Reference
