// Values of options as they stand in the command line, before the parser has its own way with them.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include <CLI/App.hpp>

namespace Orvelcs {

/// "-" alone stands for a stream.
bool looksLikeOption(const std::string& word);

/// An option whose value is not one that it can have, and what is wrong with it.
struct MisusedOption {
    const CLI::App* command = nullptr; // the one it was given to
    std::string option;
    std::string message;
};

/// The first such option before "--". The parser takes the next word for the value that "--option=" lacks, gives flags
/// values, and cannot tell an empty value from none.
std::optional<MisusedOption> misusedOption(const CLI::App& program, const std::vector<std::string>& words);

} // namespace Orvelcs
