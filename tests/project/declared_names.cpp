#include "project/declared_names.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <vector>

#include "project/cpp_tokens.h"

namespace Tests {
namespace {

using Tokens = std::vector<std::string>;

template <std::size_t count>
bool isOneOf(const std::string& token, const std::array<const char*, count>& words)
{
    return std::ranges::find(words, token) != words.end();
}

struct Scope {
    std::string prefix; // with its "::"
    std::string className;
    bool isPublic = true;
};

/// The tokens of a declaration, and the token that ends it.
struct Head {
    Tokens tokens;
    std::string end;
};

class DeclarationReader {
public:
    explicit DeclarationReader(Tokens tokens) : tokens_(std::move(tokens)) {}

    std::set<std::string> run()
    {
        while (!atEnd())
            readStatement();
        return std::move(names_);
    }

private:
    bool atEnd() const { return position_ >= tokens_.size(); }
    const std::string& look(std::size_t ahead = 0) const
    {
        static const std::string none;
        return position_ + ahead < tokens_.size() ? tokens_[position_ + ahead] : none;
    }
    const std::string& take()
    {
        const std::string& token = look();
        ++position_;
        return token;
    }
    bool skipIf(const char* token)
    {
        if (look() != token)
            return false;
        ++position_;
        return true;
    }

    /// Skips from an opening token to behind the one that closes it.
    void skipGroup(const char* open, const char* close)
    {
        std::size_t depth = 0;
        do {
            const std::string& token = take();
            if (token == open)
                ++depth;
            else if (token == close)
                --depth;
        } while (depth != 0 && !atEnd());
    }

    void skipStatement()
    {
        while (!atEnd() && look() != ";") {
            if (look() == "{")
                skipGroup("{", "}");
            else
                ++position_;
        }
        skipIf(";");
    }

    /// Reads tokens up to the first of `{`, `;`, `=` and `(`. Skips attributes.
    Head takeHead()
    {
        Head head;
        while (!atEnd() && !isOneOf(look(), std::array{"{", ";", "=", "("})) {
            if (look() == "[")
                skipGroup("[", "]");
            else
                head.tokens.push_back(take());
        }
        head.end = look();
        return head;
    }

    void add(const std::string& name)
    {
        if (isIdentifier(name) && scopes_.back().isPublic)
            names_.insert(scopes_.back().prefix + name);
    }

    void readStatement()
    {
        const std::string& first = look();
        if (first == "}")
            leaveScope();
        else if (first == "#define")
            readMacro();
        else if (isOneOf(first, std::array{"public", "protected", "private"}))
            readAccess();
        else if (first == "template")
            skipTemplateParameters();
        else if (first == "namespace" || (first == "extern" && look(1) == "{"))
            readBlock();
        else if (first == "using")
            readAlias();
        else if (first == "friend")
            skipStatement();
        else if (isOneOf(first, std::array{"class", "struct", "union", "enum"}))
            readType();
        else
            readDeclaration();
    }

    void leaveScope()
    {
        ++position_;
        if (scopes_.size() > 1)
            scopes_.pop_back();
        if (isIdentifier(look()) && look(1) == ";") // a member of the type just closed
            add(take());
    }

    void readMacro()
    {
        ++position_;
        names_.insert(take());
    }

    void readAccess()
    {
        scopes_.back().isPublic = take() == "public";
        skipIf(":");
    }

    void skipTemplateParameters()
    {
        ++position_;
        skipGroup("<", ">");
    }

    void readBlock()
    {
        const bool isNamespace = take() == "namespace";
        const Head head = takeHead();
        if (head.end != "{") { // an alias
            skipStatement();
            return;
        }
        ++position_;
        Scope scope = scopes_.back();
        for (const std::string& token : head.tokens)
            scope.prefix += token;
        if (isNamespace && !head.tokens.empty())
            scope.prefix += "::";
        scopes_.push_back(scope);
    }

    void readAlias()
    {
        if (look(2) == "=")
            add(look(1));
        skipStatement();
    }

    void readType()
    {
        const std::size_t start = position_;
        const Head head = takeHead();
        if (head.end == ";") // a forward declaration, or an elaborated member, which interfaces do not use
            skipStatement();
        else if (head.end == "{")
            enterType(head.tokens);
        else {
            position_ = start + 1; // the type of a function or a constant
            readDeclaration();
        }
    }

    void enterType(const Tokens& head)
    {
        const auto base = std::ranges::find(head, ":");
        std::string name;
        for (auto token = head.begin(); token != base; ++token)
            if (isIdentifier(*token) && !isOneOf(*token, std::array{"class", "struct", "union", "enum", "final"}))
                name = *token;
        const std::string parent = scopes_.back().prefix;
        add(name);
        ++position_;
        const bool isEnumeration = head[0] == "enum";
        const bool keepsNames = name.empty() || (isEnumeration && (head.size() < 2 || head[1] != "class"));
        scopes_.push_back({keepsNames ? parent : parent + name + "::", name, isVisible(head[0])});
        if (isEnumeration)
            readEnumerators();
    }

    bool isVisible(const std::string& keyword) const { return keyword != "class" && scopes_.back().isPublic; }

    void readEnumerators()
    {
        while (!atEnd() && look() != "}") {
            add(take());
            while (!atEnd() && look() != "," && look() != "}") {
                if (look() == "(")
                    skipGroup("(", ")");
                else
                    ++position_;
            }
            skipIf(",");
        }
    }

    void readDeclaration()
    {
        Head head = takeHead();
        const bool isFunction = head.end == "(";
        const bool isOperator = std::ranges::find(head.tokens, "operator") != head.tokens.end();
        if (!head.tokens.empty() && !isOperator) {
            const std::string name = head.tokens.back();
            head.tokens.pop_back();
            const bool isDestructor = !head.tokens.empty() && head.tokens.back() == "~";
            if (!isDestructor && !(isFunction && name == scopes_.back().className))
                add(name);
        }
        finishDeclaration();
    }

    /// Skips to behind the `;` or the body.
    void finishDeclaration()
    {
        while (!atEnd() && look() != ";" && look() != "{")
            ++position_;
        if (look() == "{")
            skipGroup("{", "}");
        else
            skipIf(";");
    }

    Tokens tokens_;
    std::size_t position_ = 0;
    std::vector<Scope> scopes_{Scope{}};
    std::set<std::string> names_;
};

} // namespace

Names parseDeclaredNames(std::string_view header)
{
    return DeclarationReader(tokenize(header)).run();
}

} // namespace Tests
