// Checks the values of options before the parser reads them.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include <CLI/App.hpp>

namespace Orvelcs {

/// "-" alone is a stream and not an option.
bool looksLikeOption(const std::string& word);

/// Whether the word stands before "--".
bool holdsOption(const std::vector<std::string>& words, const std::string& option);

/// An option with a value that it cannot have, or without one that it needs.
struct MisusedOption {
    const CLI::App* command = nullptr; // to which the option belongs
    std::string option;
    std::string message;
};

/// Finds the first such option before "--". The parser accepts them: it reads the next word as the value of
/// "--option=", gives flags values, and does not distinguish an empty value from none.
std::optional<MisusedOption> misusedOption(const CLI::App& program, const std::vector<std::string>& words);

} // namespace Orvelcs
