// Words of codes and names, as a person looks for them.
#pragma once

#include <cstddef>
#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "platform/export.h"

namespace Embedded {

/// How a text has a word, the best first.
enum class WordMatch { whole, beginning, inside, none };

/// The best of the places at which the text has the word. Both are in the form of searchForm. A word ends where letters
/// and digits end, so that "32n" is a whole word of "utm zone 32n/east".
ZSR_API WordMatch matchWord(std::wstring_view text, std::wstring_view word);

/// The parts of the text between blanks.
ZSR_API std::vector<std::wstring> splitAtBlanks(const std::wstring& text);
/// The longest parts of the text that are letters and digits alone.
std::vector<std::wstring> splitIntoWords(std::wstring_view text);

/// Corrects the misspelt words of texts by the words of many names.
class ZSR_API WordCorrection {
public:
    /// Every word of the name becomes known.
    void learn(std::wstring_view name);

    /// The text with its unknown words replaced by known ones that differ in one or two characters: one text for each
    /// choice, at most `limit`, in lower case. Empty when every word is known, and when one has no near word.
    std::vector<std::wstring> correct(std::wstring_view text, std::size_t limit) const;

private:
    bool knows(std::wstring_view word) const;
    std::vector<std::wstring> nearest(std::wstring_view word) const;

    std::set<std::wstring, std::less<>> words_;
};

} // namespace Embedded
