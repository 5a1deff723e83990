#include "project/forward_declarations.h"

#include <cstddef>

#include "project/cpp_tokens.h"

namespace Tests {
namespace {

bool isClassKey(const std::string& token)
{
    return token == "class" || token == "struct" || token == "union" || token == "enum";
}

/// Also of the attributes before the name.
bool isPartOfName(const std::string& token)
{
    return isIdentifier(token) || token == "::" || token == "[" || token == "]";
}

/// The position after the attributes, macros and names that follow a class-key.
std::size_t skipNames(const std::vector<std::string>& tokens, std::size_t position)
{
    while (position < tokens.size() && isPartOfName(tokens[position]))
        ++position;
    return position;
}

/// Whether the names between the class-key and `end` are those of a template's parameter.
bool isTemplateParameter(const std::vector<std::string>& tokens, std::size_t key, std::size_t end)
{
    return key > 0 && (tokens[key - 1] == "<" || tokens[key - 1] == ",") && end < tokens.size() &&
           (tokens[end] == ">" || tokens[end] == "," || tokens[end] == "=");
}

bool startsDefinition(const std::vector<std::string>& tokens, std::size_t position)
{
    return position < tokens.size() && (tokens[position] == "{" || tokens[position] == ":");
}

} // namespace

std::set<std::string> findDefinedTypes(const std::vector<SourceFile>& files)
{
    std::set<std::string> names;
    for (const SourceFile& file : files) {
        const std::vector<std::string> tokens = tokenize(file.text);
        for (std::size_t key = 0; key < tokens.size(); ++key) {
            std::size_t end = skipNames(tokens, key + 1);
            if (!isClassKey(tokens[key]) || !startsDefinition(tokens, end))
                continue;
            if (tokens[end - 1] == "final")
                --end;
            if (end > key + 1)
                names.insert(tokens[end - 1]);
        }
    }
    return names;
}

std::vector<std::string> findForwardDeclarations(const std::vector<SourceFile>& files,
                                                 const std::set<std::string>& names)
{
    std::vector<std::string> complaints;
    for (const SourceFile& file : files) {
        const std::vector<std::string> tokens = tokenize(file.text);
        for (std::size_t key = 0; key < tokens.size(); ++key) {
            const std::size_t end = skipNames(tokens, key + 1);
            if (!isClassKey(tokens[key]) || isTemplateParameter(tokens, key, end))
                continue;
            for (std::size_t position = key + 1; position < end; ++position)
                if (names.contains(tokens[position]))
                    complaints.push_back(file.path + ": \"" + tokens[key] + " " + tokens[position] +
                                         "\"; include the platform's header instead, since a product may use an alias");
        }
    }
    return complaints;
}

} // namespace Tests
