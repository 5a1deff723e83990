#include "embedded/spatial_reference/catalog/catalog_words.h"

#include <algorithm>
#include <sstream>

#include "embedded/base/edit_distance.h"
#include "embedded/base/parse_number.h"
#include "embedded/spatial_reference/catalog/catalog_order.h"

namespace Embedded {
namespace {

/// Of texts in lower case. Beyond ASCII only the signs of Latin 1, such as that of degrees, are not letters.
bool isWordCharacter(wchar_t character)
{
    constexpr wchar_t kFirstLetterOfLatin1 = 0xC0;
    return isDigit(character) || (character >= L'a' && character <= L'z') || character >= kFirstLetterOfLatin1;
}

bool isBoundary(wchar_t left, wchar_t right)
{
    return !isWordCharacter(left) || !isWordCharacter(right);
}

WordMatch matchAt(std::wstring_view text, std::wstring_view word, std::size_t place)
{
    const std::size_t end = place + word.size();
    if (place > 0 && !isBoundary(text[place - 1], word.front()))
        return WordMatch::inside;
    return end == text.size() || isBoundary(word.back(), text[end]) ? WordMatch::whole : WordMatch::beginning;
}

/// One or two slips. A word that is further away is another word.
std::size_t largestWordDistance(std::wstring_view word)
{
    constexpr std::size_t kShort = 4;
    return word.size() <= kShort ? 1 : 2;
}

} // namespace

WordMatch matchWord(std::wstring_view text, std::wstring_view word)
{
    WordMatch best = WordMatch::none;
    for (auto place = text.find(word); place != std::wstring_view::npos && best != WordMatch::whole && !word.empty();
         place = text.find(word, place + 1))
        best = std::min(best, matchAt(text, word, place));
    return best;
}

std::vector<std::wstring> splitAtBlanks(const std::wstring& text)
{
    std::wistringstream stream(text);
    std::vector<std::wstring> words;
    for (std::wstring word; stream >> word;)
        words.push_back(word);
    return words;
}

std::vector<std::wstring> splitIntoWords(std::wstring_view text)
{
    std::vector<std::wstring> words;
    const std::wstring lower = searchForm(text);
    for (auto first = std::ranges::find_if(lower, isWordCharacter); first != lower.end();) {
        const auto last = std::find_if_not(first, lower.end(), isWordCharacter);
        words.emplace_back(first, last);
        first = std::find_if(last, lower.end(), isWordCharacter);
    }
    return words;
}

void WordCorrection::learn(std::wstring_view name)
{
    for (std::wstring& word : splitIntoWords(name))
        words_.insert(std::move(word));
}

/// Returns whether a word begins so.
bool WordCorrection::knows(std::wstring_view word) const
{
    const auto place = words_.lower_bound(word);
    return place != words_.end() && place->starts_with(word);
}

std::vector<std::wstring> WordCorrection::nearest(std::wstring_view word) const
{
    constexpr std::size_t kShortest = 3; // anything may be meant by fewer characters
    constexpr std::size_t kLongest = 64; // nothing that long is misspelt
    if (word.size() < kShortest || word.size() > kLongest || std::ranges::all_of(word, isDigit<wchar_t>))
        return {};
    std::size_t best = largestWordDistance(word);
    std::vector<std::wstring> near;
    for (const std::wstring& known : words_) {
        if (known.size() > word.size() + best || word.size() > known.size() + best)
            continue;
        const std::size_t distance = editDistance(word, known, {});
        if (distance < best)
            near.clear();
        if (distance <= best) {
            best = distance;
            near.push_back(known);
        }
    }
    return near;
}

std::vector<std::wstring> WordCorrection::correct(std::wstring_view text, std::size_t limit) const
{
    std::vector<std::wstring> texts{L""};
    bool isChanged = false;
    for (const std::wstring& word : splitIntoWords(text)) {
        const bool isKnown = knows(word);
        const std::vector<std::wstring> replacements = isKnown ? std::vector{word} : nearest(word);
        isChanged = isChanged || !isKnown;
        std::vector<std::wstring> longer;
        for (const std::wstring& beginning : texts)
            for (const std::wstring& replacement : replacements)
                if (longer.size() < limit)
                    longer.push_back(beginning + (beginning.empty() ? L"" : L" ") + replacement);
        texts = std::move(longer);
    }
    return isChanged ? texts : std::vector<std::wstring>();
}

} // namespace Embedded
