// Lines of text that have columns, as in RFC 4180.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Orvelcs {

/// Between which characters columns stand: a delimiter, or where there is none, blanks and tabs.
using Delimiter = std::optional<char>;

/// The delimiter that the option has as its value: one character, or the word "tab". Throws Failure for wrong usage.
char delimiterArgument(const std::string& option, const std::string& text);

/// Cuts the line into its columns. With a delimiter a column may be in quotes, and has them in its text. Returns false
/// if the line ends within quotes.
[[nodiscard]] bool splitColumns(std::string_view line, Delimiter delimiter, std::vector<std::string_view>& columns);

/// The text of a column without the blanks around it and, with a delimiter, without its quotes.
std::string columnText(std::string_view column, Delimiter delimiter);

/// The text as a column, in quotes where it needs them.
std::string quotedColumn(const std::string& text, char delimiter);

} // namespace Orvelcs
