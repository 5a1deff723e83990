#include "configuration_text.h"

#include <array>

namespace Bench {
namespace {

constexpr std::array kNames{
    L"ETRS89 to WGS 84 (1)",        L"NTF (Paris) to WGS 84 (1)", L"Amersfoort to ETRS89 (5)", L"NAD27 to NAD83 (1)",
    L"OSGB36 to ETRS89 (2)",        L"ED50 to WGS 84 (23)",       L"DHDN to ETRS89 (8)",       L"Tokyo to WGS 84 (108)",
    L"Pulkovo 1942 to WGS 84 (16)", L"Belge 1972 to WGS 84 (3)",  L"S-JTSK to WGS 84 (1)",     L"NTF to WGS 84 (1)",
    L"Monte Mario to WGS 84 (4)",
};

constexpr std::size_t kTargets = 1024;
constexpr std::size_t kFirstSource = 2000;
constexpr std::size_t kFirstTarget = 20000;
constexpr std::size_t kItemsPerNote = 8;
constexpr std::size_t kMaximumCharacters = 180; // of an element

void appendItem(std::wstring& text, std::size_t index)
{
    const CodePair pair = pairAt(index);
    text.append(L"<Item><Version>1.0</Version><SourceCs>").append(pair.source);
    text.append(L"</SourceCs><TargetCs>").append(pair.target);
    text.append(L"</TargetCs><Name>").append(nameAt(index));
    text.append(L"</Name><Type>2</Type><Note>").append(index % kItemsPerNote == 0 ? L"geprüft" : L"");
    text.append(L"</Note></Item>");
}

} // namespace

CodePair pairAt(std::size_t index)
{
    return {L"EPSG:" + std::to_wstring(kFirstSource + index / kTargets),
            L"EPSG:" + std::to_wstring(kFirstTarget + index % kTargets)};
}

CodePair absentPair()
{
    return {L"EPSG:4258", L"EPSG:4326"};
}

const wchar_t* nameAt(std::size_t index)
{
    return kNames[index % kNames.size()];
}

std::wstring configurationText(std::size_t items)
{
    std::wstring text;
    text.reserve(items * kMaximumCharacters);
    for (std::size_t index = 0; index < items; ++index)
        appendItem(text, index);
    return text;
}

} // namespace Bench
