#include "orvelcs/drawing/config_text.h"

#include <string_view>
#include <utility>

#include "embedded/base/case_folding.h"

namespace Orvelcs {
namespace {

constexpr std::wstring_view kItemBegin = L"<Item>";
constexpr std::wstring_view kItemEnd = L"</Item>";
constexpr std::wstring_view kBlanks = L" \t\n\v\f\r"; // the module ignores them before an item

bool isSame(const std::wstring& left, const std::wstring& right)
{
    return Embedded::toLowerCase(left) == Embedded::toLowerCase(right);
}

/// The module reads a field between the first tags of its name.
void replaceField(std::wstring& element, const std::wstring& tag, const std::wstring& before, const std::wstring& after)
{
    const std::wstring opening = L"<" + tag + L">";
    const std::size_t place = element.find(opening);
    if (before != after && place != std::wstring::npos)
        element.replace(place + opening.size(), before.size(), after);
}

} // namespace

std::vector<PlacedItem> placedItems(const std::wstring& text)
{
    std::vector<PlacedItem> placed;
    std::size_t begin = 0;
    for (ConfigItem& item : parseItems(text)) {
        const std::size_t end = text.find(kItemEnd, begin) + kItemEnd.size();
        const std::size_t first = text.find_first_not_of(kBlanks, begin);
        if (text.compare(first, kItemBegin.size(), kItemBegin) == 0)
            begin = first;
        placed.push_back({std::move(item), begin, end - begin});
        begin = end;
    }
    return placed;
}

bool isPair(const ConfigItem& item, const std::wstring& source, const std::wstring& target)
{
    return isSame(item.source, source) && isSame(item.target, target);
}

std::wstring withoutPair(const std::wstring& text, const std::wstring& source, const std::wstring& target)
{
    std::wstring rest;
    std::size_t kept = 0;
    for (const PlacedItem& place : placedItems(text)) {
        if (!isPair(place.item, source, target))
            continue;
        rest.append(text, kept, place.begin - kept);
        kept = place.begin + place.length;
    }
    return rest.append(text, kept);
}

std::wstring withFields(std::wstring element, const ConfigItem& item, const ConfigItem& changed)
{
    replaceField(element, L"SourceCs", item.source, changed.source);
    replaceField(element, L"TargetCs", item.target, changed.target);
    replaceField(element, L"Name", item.name, changed.name);
    return element;
}

} // namespace Orvelcs
