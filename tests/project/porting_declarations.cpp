#include "project/porting_declarations.h"

#include <algorithm>
#include <cstddef>
#include <regex>
#include <sstream>

#include "project/cpp_tokens.h"

namespace Tests {
namespace {

using Tokens = std::vector<std::string>;

constexpr std::string_view kLibraryNamespace = "Zentara::Infrastructure::SpatialReference";

/// The words with one blank between them.
std::string trimBlanks(const std::string& text)
{
    std::istringstream words(text);
    std::string trimmed;
    for (std::string word; words >> word;)
        trimmed += (trimmed.empty() ? "" : " ") + word;
    return trimmed;
}

/// The position behind the bracket that closes the one at `open`.
std::size_t findEndOfGroup(std::string_view text, std::size_t open)
{
    int depth = 0;
    for (std::size_t at = open; at < text.size(); ++at) {
        if (text[at] == '(' || text[at] == '{' || text[at] == '<')
            ++depth;
        if (text[at] == ')' || text[at] == '}' || (text[at] == '>' && text[at - 1] != '-'))
            --depth;
        if (depth == 0)
            return at + 1;
    }
    return text.size();
}

std::string joinTokens(const Tokens& tokens)
{
    std::string text;
    for (const std::string& token : tokens) {
        const bool isBetweenWords = !text.empty() && isIdentifier(text.substr(text.size() - 1)) && isIdentifier(token);
        text += (isBetweenWords ? " " : "") + token;
    }
    return text;
}

/// The type of a parameter, without its name and its default.
std::string parseParameterType(const std::string& parameter)
{
    static const std::regex builtIn("int|bool|char|wchar_t|short|long|unsigned|double|void|const");
    Tokens tokens = tokenize(parameter.substr(0, parameter.find('=')));
    if (tokens.size() > 1 && isIdentifier(tokens.back()) && !std::regex_match(tokens.back(), builtIn)) {
        const std::string& before = tokens[tokens.size() - 2];
        if (before != "::" && before != "const")
            tokens.pop_back();
    }
    const std::string type = joinTokens(tokens);
    return type == "unsigned int" ? "unsigned" : type;
}

std::vector<std::string> splitParameters(const std::string& list)
{
    std::vector<std::string> parameters;
    std::size_t start = 0;
    for (std::size_t at = 0; at <= list.size(); ++at) {
        if (at < list.size() && (list[at] == '(' || list[at] == '<'))
            at = findEndOfGroup(list, at) - 1;
        else if (at == list.size() || list[at] == ',') {
            const std::string parameter = trimBlanks(list.substr(start, at - start));
            if (!parameter.empty() && parameter != "void")
                parameters.push_back(parameter);
            start = at + 1;
        }
    }
    return parameters;
}

/// The words of a declaration that say nothing of its type.
std::string removeSpecifiers(const std::string& text)
{
    static const std::regex specifiers(
        R"(\[\[[^\]]*\]\]|\b(inline|constexpr|extern|noexcept|override|[A-Z0-9_]+_(API|SDK|EXPORT))\b|"C")");
    return trimBlanks(std::regex_replace(text, specifiers, " "));
}

/// The types of a function whose declaration has `parameters` in its brackets and `tail` after them.
Signature parseSignature(const std::string& result, const std::string& parameters, const std::string& tail)
{
    Signature signature;
    Tokens tokens = tokenize(result);
    std::erase_if(tokens,
                  [](const auto& token) { return token == "static" || token == "virtual" || token == "explicit"; });
    signature.result = joinTokens(tokens);
    signature.isConst = tail.starts_with("const");
    for (const std::string& parameter : splitParameters(parameters)) {
        signature.parameters.push_back(parseParameterType(parameter));
        signature.required += parameter.find('=') == std::string::npos ? 1U : 0U;
    }
    return signature;
}

class HeaderReader {
public:
    explicit HeaderReader(std::string_view text) : rest_(text) {}

    std::vector<Declaration> run()
    {
        for (skipBlanks(); !rest_.empty(); skipBlanks())
            step();
        return std::move(declarations_);
    }

private:
    struct Scope {
        std::string prefix; // with its "::"
        bool isEnumeration = false;
        bool isVisible = true;
        std::string keyword{};       // "union" for a union without a name
        std::string memberComment{}; // of the member that is declared after the end of such a union
    };

    void skipBlanks() { rest_.remove_prefix(std::min(rest_.find_first_not_of(" \t\r\n"), rest_.size())); }

    std::string takeLine()
    {
        const std::size_t end = std::min(rest_.find('\n'), rest_.size());
        std::string line(rest_.substr(0, end));
        rest_.remove_prefix(end);
        return trimBlanks(line);
    }

    void step()
    {
        if (rest_.starts_with("///"))
            comment_ += (comment_.empty() ? "" : " ") + trimBlanks(takeLine().substr(3));
        else if (rest_.starts_with("//"))
            readPlainComment();
        else if (rest_.starts_with("#"))
            readDirective();
        else if (!readAccess())
            readStatement();
    }

    void readPlainComment()
    {
        const std::string line = takeLine();
        if (rest_.starts_with("\n\n") && scopes_.size() == 1 && isAfterPragma_)
            section_ = trimBlanks(line.substr(2));
    }

    void readDirective()
    {
        static const std::regex definition(R"(#define (\w+)\b.*)");
        const std::string line = takeLine();
        for (bool isContinued = line.ends_with('\\'); isContinued;) {
            skipBlanks();
            isContinued = takeLine().ends_with('\\');
        }
        isAfterPragma_ = isAfterPragma_ || line == "#pragma once";
        std::smatch match;
        if (std::regex_match(line, match, definition))
            add(match[1], line);
        comment_.clear();
    }

    bool readAccess()
    {
        static const std::regex access(R"((public|protected|private)\s*:)");
        std::match_results<std::string_view::const_iterator> match;
        if (!std::regex_search(rest_.begin(), rest_.end(), match, access, std::regex_constants::match_continuous))
            return false;
        scopes_.back().isVisible = match[1] != "private";
        rest_.remove_prefix(static_cast<std::size_t>(match.length()));
        return true;
    }

    /// Takes the text up to the end of a statement, without comments. The character that ends it stays.
    std::string takeStatement()
    {
        std::string text;
        const std::string ends = scopes_.back().isEnumeration ? ";{}," : ";{}";
        while (!rest_.empty() && ends.find(rest_.front()) == std::string::npos) {
            if (rest_.starts_with("//")) {
                takeLine();
                continue;
            }
            std::size_t length = 1;
            if (rest_.front() == '(')
                length = findEndOfGroup(rest_, 0);
            else if (rest_.front() == '"')
                length = std::min(rest_.find('"', 1), rest_.size() - 1) + 1;
            text += rest_.substr(0, length);
            rest_.remove_prefix(length);
        }
        return removeSpecifiers(text);
    }

    void readStatement()
    {
        const std::string text = takeStatement();
        const char end = rest_.empty() ? ';' : rest_.front();
        if (end == '{') {
            readBlock(text);
            return;
        }
        rest_.remove_prefix(std::min<std::size_t>(1, rest_.size()));
        if (scopes_.back().isEnumeration)
            addNamed(text, text.substr(0, text.find_first_of(" =")));
        else
            addDeclaration(text);
        if (end == '}')
            leaveScope();
    }

    void leaveScope()
    {
        const Scope left = scopes_.back();
        if (scopes_.size() > 1)
            scopes_.pop_back();
        const std::size_t next = std::min(rest_.find_first_not_of(" ;"), rest_.size());
        const bool hasMember = next < rest_.size() && isIdentifier(rest_.substr(next, 1));
        if (hasMember) { // the member of the type that ends here
            comment_ = left.memberComment;
            addDeclaration(left.keyword + " " + takeStatement());
        } else if (rest_.substr(next).starts_with("//") && !rest_.substr(next).starts_with("///")) {
            takeLine(); // the name of a namespace that ends here
        }
        if (rest_.starts_with(";"))
            rest_.remove_prefix(1);
    }

    void readBlock(const std::string& text)
    {
        static const std::regex type(R"((?:template ?<[^>]*> ?)?(class|struct|union|enum class|enum)\b ?(\w*)[^(]*)");
        std::smatch match;
        if (text.empty() || text.starts_with("namespace")) {
            enterNamespace(text.empty() ? "" : trimBlanks(text.substr(std::string_view("namespace").size())));
        } else if (std::regex_match(text, match, type)) {
            enterType(text, match[1], match[2]);
        } else {
            addDeclaration(text);
            rest_.remove_prefix(findEndOfBody());
        }
    }

    std::size_t findEndOfBody() const
    {
        int depth = 0;
        std::size_t at = 0;
        do {
            depth += rest_[at] == '{' ? 1 : 0;
            depth -= rest_[at] == '}' ? 1 : 0;
            ++at;
        } while (depth > 0 && at < rest_.size());
        return at < rest_.size() && rest_[at] == ';' ? at + 1 : at;
    }

    void enterNamespace(const std::string& name)
    {
        rest_.remove_prefix(1);
        Scope scope{.prefix = scopes_.back().prefix};
        if (!name.empty() && name != kLibraryNamespace)
            scope.prefix += name + "::";
        scopes_.push_back(scope);
        comment_.clear();
    }

    void enterType(const std::string& text, const std::string& keyword, const std::string& name)
    {
        rest_.remove_prefix(1);
        Scope scope{.prefix = scopes_.back().prefix,
                    .isEnumeration = keyword.starts_with("enum"),
                    .isVisible = keyword != "class" && scopes_.back().isVisible};
        if (name.empty()) {
            scope.keyword = keyword;
            scope.memberComment = comment_;
        } else {
            addNamed(scope.isEnumeration ? trimBlanks(text.substr(0, text.find(':'))) : text, name);
            scope.prefix += keyword != "enum" ? name + "::" : "";
        }
        scopes_.push_back(scope);
        comment_.clear();
    }

    void addDeclaration(const std::string& text)
    {
        static const std::regex alias(R"(using (\w+) ?=.*)");
        static const std::regex forward(R"((?:class|struct|enum) (\w+))");
        static const std::regex ignored(R"(|.*= ?delete|(static_assert|using|friend|namespace)\b.*)");
        std::smatch match;
        if (std::regex_match(text, match, alias))
            addNamed(text, match[1]);
        else if (std::regex_match(text, match, forward))
            addForward(text, match[1]);
        else if (!std::regex_match(text, ignored))
            addFunctionOrVariable(text);
        comment_.clear();
    }

    void addForward(const std::string& text, const std::string& name)
    {
        const std::size_t before = declarations_.size();
        addNamed(text, name);
        if (declarations_.size() > before)
            declarations_.back().isForward = true;
    }

    void addFunctionOrVariable(const std::string& text)
    {
        static const std::regex function(R"((.*?)(~?\w+|operator[^(\w]+) ?(\(.*))");
        static const std::regex variable(R"(.*?(\w+) ?(?:\[\w*\])? ?(?:=.*)?)");
        const std::size_t start = text.starts_with("template") ? findEndOfGroup(text, text.find('<')) : 0;
        const std::string declaration = text.substr(start);
        const bool isFunction = declaration.find('(') < declaration.find(" =");
        std::smatch match;
        if (isFunction && std::regex_match(declaration, match, function)) {
            const std::string brackets = match[3];
            const std::size_t end = findEndOfGroup(brackets, 0);
            const Signature signature =
                parseSignature(match[1], brackets.substr(1, end - 2), trimBlanks(brackets.substr(end)));
            addNamed(text.substr(0, text.size() - brackets.size() + end) + (signature.isConst ? " const" : ""),
                     match[2], &signature);
        } else if (std::regex_match(declaration, match, variable)) {
            addNamed(text, match[1]);
        }
    }

    void addNamed(const std::string& text, const std::string& name, const Signature* signature = nullptr)
    {
        if (!name.empty() && scopes_.back().isVisible)
            add(scopes_.back().prefix + name, text, signature);
        comment_.clear();
    }

    void add(const std::string& name, const std::string& text, const Signature* signature = nullptr)
    {
        declarations_.push_back({.name = name,
                                 .text = text,
                                 .comment = comment_,
                                 .section = section_,
                                 .isFunction = signature != nullptr,
                                 .signature = signature != nullptr ? *signature : Signature()});
    }

    std::string_view rest_;
    std::string comment_;
    std::string section_;
    bool isAfterPragma_ = false;
    std::vector<Scope> scopes_{Scope{}};
    std::vector<Declaration> declarations_;
};

} // namespace

std::vector<Declaration> parseDeclarations(std::string_view header)
{
    return HeaderReader(header).run();
}

bool isSpecialMember(const Declaration& declaration)
{
    static const std::regex special(R"((?:.*::)?(\w+)::~?\1|.*::(~\w+|operator.*))");
    return declaration.isFunction && std::regex_match(declaration.name, special);
}

} // namespace Tests
