#include "project/cpp_tokens.h"

#include <algorithm>
#include <cctype>
#include <cstddef>

namespace Tests {
namespace {

constexpr std::string_view kDefine = "#define";

bool isWordCharacter(char c)
{
    return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_';
}

class Tokenizer {
public:
    explicit Tokenizer(std::string_view text) : rest_(text) {}

    std::vector<std::string> run()
    {
        while (!rest_.empty())
            step();
        return std::move(tokens_);
    }

private:
    void step()
    {
        if (rest_.starts_with("//"))
            skipPast("\n");
        else if (rest_.starts_with("/*"))
            skipPast("*/");
        else if (rest_.front() == '#')
            takeDirective();
        else if (rest_.front() == '"' || rest_.front() == '\'')
            skipLiteral();
        else if (isWordCharacter(rest_.front()))
            takeWord();
        else
            takePunctuation();
    }

    void skipPast(std::string_view end)
    {
        const std::size_t found = rest_.find(end);
        rest_.remove_prefix(found == std::string_view::npos ? rest_.size() : found + end.size());
    }

    void skipLiteral()
    {
        const char quote = rest_.front();
        std::size_t end = 1;
        while (end < rest_.size() && rest_[end] != quote)
            end += rest_[end] == '\\' ? 2U : 1U;
        rest_.remove_prefix(std::min(end + 1, rest_.size()));
    }

    /// Skips R"delimiter(…)delimiter" from its quote.
    void skipRawLiteral()
    {
        const std::string delimiter(rest_.substr(1, rest_.find('(') - 1));
        skipPast(")" + delimiter + "\"");
    }

    void takeDirective()
    {
        std::size_t end = rest_.find('\n');
        while (end != std::string_view::npos && rest_[end - 1] == '\\')
            end = rest_.find('\n', end + 1);
        const std::vector<std::string> words = Tokenizer(rest_.substr(1, end - 1)).run();
        if (words.size() >= 2 && words[0] == kDefine.substr(1))
            tokens_.insert(tokens_.end(), {std::string(kDefine), words[1]});
        rest_.remove_prefix(std::min(end, rest_.size()));
    }

    void takeWord()
    {
        const bool isNumber = !isIdentifier(rest_.substr(0, 1));
        const auto* const end =
            std::ranges::find_if(rest_, [&](char c) { return !isWordCharacter(c) && !(isNumber && c == '\''); });
        const std::string word(rest_.begin(), end);
        rest_.remove_prefix(word.size());
        const bool isPrefix = !rest_.empty() && (rest_.front() == '"' || rest_.front() == '\'');
        if (!isPrefix)
            tokens_.push_back(word);
        else if (word.ends_with('R'))
            skipRawLiteral();
    }

    void takePunctuation()
    {
        const std::size_t length = rest_.starts_with("::") || rest_.starts_with("->") ? 2U : 1U;
        if (std::isspace(static_cast<unsigned char>(rest_.front())) == 0)
            tokens_.emplace_back(rest_.substr(0, length));
        rest_.remove_prefix(length);
    }

    std::string_view rest_;
    std::vector<std::string> tokens_;
};

} // namespace

std::vector<std::string> tokenize(std::string_view text)
{
    return Tokenizer(text).run();
}

bool isIdentifier(std::string_view token)
{
    return !token.empty() && isWordCharacter(token.front()) &&
           std::isdigit(static_cast<unsigned char>(token.front())) == 0;
}

} // namespace Tests
