#include "project/porting_list.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <regex>

#include "project/cpp_tokens.h"

namespace Tests {
namespace {

using Tokens = std::vector<std::string>;

bool isOverride(const Tokens& tokens, std::size_t afterName)
{
    if (afterName >= tokens.size() || tokens[afterName] != "(")
        return false;
    const auto end = std::find_if(tokens.begin() + static_cast<std::ptrdiff_t>(afterName), tokens.end(),
                                  [](const std::string& token) { return token == ";" || token == "{"; });
    return *(end - 1) == "override";
}

void addUsage(Usage& usage, const Tokens& tokens)
{
    for (std::size_t index = 0; index < tokens.size(); ++index) {
        if (!isIdentifier(tokens[index]))
            continue;
        const std::string& name = tokens[index];
        usage.identifiers.insert(name);
        if (isOverride(tokens, index + 1))
            usage.overridden.insert(name);
        const std::string& before = index > 0 ? tokens[index - 1] : "";
        if (before == "." || before == "->" || before == "::")
            usage.selected.insert(name);
        if (before == "::" && index > 1)
            usage.qualified.insert(tokens[index - 2] + "::" + name);
    }
}

/// The A of "A::b"; empty for a name without a scope.
std::string getScope(const std::string& name)
{
    const std::size_t end = name.rfind("::");
    return end == std::string::npos ? "" : name.substr(0, end);
}

std::string getLastPart(const std::string& name)
{
    const std::size_t end = name.rfind("::");
    return end == std::string::npos ? name : name.substr(end + 2);
}

bool isMember(const std::string& name, const Names& declared)
{
    return declared.contains(getScope(name));
}

bool isUsedAsMember(const std::string& member, const Usage& usage)
{
    return usage.selected.contains(member) || usage.overridden.contains(member);
}

bool isUsedFreely(const std::string& name, const Usage& usage)
{
    if (!getScope(name).empty())
        return usage.qualified.contains(name);
    return usage.identifiers.contains(name);
}

/// Types that a product has of its own where the module passes constants or compares numbers.
std::string toCommonType(const std::string& type)
{
    static const std::map<std::string, std::string> common{{"SerializationFormat", "int"},
                                                           {"WktFlavor", "int"},
                                                           {"QeAp::DocLockMode", "int"},
                                                           {"HRESULT", "int"},
                                                           {"LSTATUS", "int"},
                                                           {"errno_t", "int"},
                                                           {"UINT", "unsigned"},
                                                           {"REGSAM", "DWORD"},
                                                           {"HWND", "void*"}};
    const auto found = common.find(type);
    return found != common.end() ? found->second : type;
}

bool mayHaveAnyResult(const Declaration& declaration)
{
    static const std::regex left("The result is not looked at|of any integer type");
    return std::regex_search(declaration.comment, left);
}

/// The type of a class's field. Empty for anything else.
std::string getFieldType(const Declaration& declaration)
{
    Tokens tokens = tokenize(declaration.text);
    const auto name = std::ranges::find(tokens, getLastPart(declaration.name));
    if (getScope(declaration.name).empty() || name == tokens.end() || tokens.front() == "enum")
        return {};
    std::string type;
    for (auto token = tokens.begin(); token != name; ++token)
        type += *token + " ";
    return type;
}

/// A member whose type is declared elsewhere has none.
bool hasSameFieldType(const Declaration& asked, const Declaration& other)
{
    const std::string otherType = getFieldType(other);
    return otherType.empty() || getFieldType(asked) == otherType;
}

/// Whether uses of the one declaration are uses of the other.
bool suits(const Declaration& asked, const Declaration& other)
{
    const Signature& needed = asked.signature;
    const Signature& given = other.signature;
    if (asked.isFunction != other.isFunction)
        return false;
    if (!asked.isFunction)
        return hasSameFieldType(asked, other);
    const std::size_t count = needed.parameters.size();
    return given.required <= count && given.parameters.size() >= count &&
           std::equal(needed.parameters.begin(), needed.parameters.end(), given.parameters.begin(),
                      [](const auto& left, const auto& right) { return toCommonType(left) == toCommonType(right); }) &&
           given.isConst == needed.isConst &&
           (mayHaveAnyResult(asked) || toCommonType(needed.result) == toCommonType(given.result));
}

/// The declarations of that name. Without one those of the last part, for the member of a base.
std::vector<Declaration> findByName(const std::vector<Declaration>& declarations, const std::string& name)
{
    std::vector<Declaration> found;
    for (const Declaration& declaration : declarations)
        if (declaration.name == name)
            found.push_back(declaration);
    if (found.empty())
        for (const Declaration& declaration : declarations)
            if (getLastPart(declaration.name) == getLastPart(name))
                found.push_back(declaration);
    return found;
}

} // namespace

Usage collectUsage(const std::vector<SourceFile>& sources)
{
    Usage usage;
    for (const SourceFile& source : sources)
        addUsage(usage, tokenize(source.text));
    return usage;
}

bool isForOthers(const Declaration& declaration)
{
    return declaration.comment.find("No source of the module names it") != std::string::npos;
}

Names collectNames(const std::vector<Declaration>& declarations)
{
    Names names;
    for (const Declaration& declaration : declarations)
        if (!isSpecialMember(declaration) && !(declaration.isForward && declaration.comment.empty()))
            names.insert(declaration.name);
    return names;
}

std::vector<std::string> compareWithPlatform(const std::vector<Declaration>& asked,
                                             const std::vector<Declaration>& platform)
{
    std::vector<std::string> complaints;
    for (const Declaration& declaration : asked) {
        if (declaration.comment.empty() || isSpecialMember(declaration) || isForOthers(declaration))
            continue;
        const std::vector<Declaration> candidates = findByName(platform, declaration.name);
        if (candidates.empty())
            complaints.push_back(declaration.name + ": not declared");
        else if (std::ranges::none_of(candidates, [&](const Declaration& each) { return suits(declaration, each); }))
            complaints.push_back(declaration.name + ": expected " + declaration.text + ", found " +
                                 candidates.front().text);
    }
    return complaints;
}

bool isUsed(const std::string& name, const Names& declared, const Usage& usage)
{
    if (isMember(name, declared))
        return isUsedAsMember(getLastPart(name), usage);
    return isUsedFreely(name, usage) || std::ranges::any_of(declared, [&](const std::string& other) {
               return getScope(other) == name && isUsedAsMember(getLastPart(other), usage);
           });
}

std::vector<std::string> complainAboutMissing(const Names& names, const Names& others, const std::string& what)
{
    std::vector<std::string> complaints;
    for (const std::string& name : names)
        if (!others.contains(name))
            complaints.push_back(name + ": " + what);
    return complaints;
}

Names findUsedFreeNames(const Names& declared, const Usage& usage)
{
    Names used;
    for (const std::string& name : declared)
        if (!isMember(name, declared) && isUsedFreely(name, usage))
            used.insert(name);
    return used;
}

Names findUnlistedNames(const Names& listed, const Usage& usage)
{
    static const std::regex prefixed(R"((Qe[A-Z]|Qeapp|Fq[A-Z]|qe(db|rx|ut|app_|Heap|Doc)|kQe)\w*)");
    Names known;
    for (const std::string& name : listed)
        for (const std::string& part : tokenize(name))
            known.insert(part);
    Names found;
    for (const std::string& identifier : usage.identifiers)
        if (std::regex_match(identifier, prefixed) && !known.contains(identifier))
            found.insert(identifier);
    return found;
}

} // namespace Tests
