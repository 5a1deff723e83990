// Texts of the help, in a form from which the help, the man page and the pages are made.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace Orvelcs {

/// A part of a text. In the source an empty line ends a paragraph, and other line ends are blanks. A line that begins
/// with two blanks is an item: a term, two blanks or more, and what the term means. Without a meaning it is a literal
/// line.
struct TextBlock {
    enum class Kind { paragraph, item, literal };
    Kind kind = Kind::paragraph;
    std::string term; // of an item
    std::string text;
};

std::vector<TextBlock> parseTextBlocks(const std::string& text);

/// The words in lines of at most `width` columns. The first line begins after `column` columns that are in use, the
/// others with `indent` blanks. A word that is longer has a line of its own.
std::string wrapText(const std::string& text, std::size_t width, std::size_t indent, std::size_t column);

/// Each block on lines of its own, with an empty line before a paragraph that follows something.
std::string layOutBlocks(const std::vector<TextBlock>& blocks, std::size_t width);

/// A line with a term in the first column and its meaning in the second, whose lines are aligned.
std::string layOutTerm(const std::string& term, const std::string& meaning, std::size_t width, std::size_t termColumns);

} // namespace Orvelcs
