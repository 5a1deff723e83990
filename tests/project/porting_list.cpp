#include "project/porting_list.h"

#include <algorithm>
#include <cstddef>
#include <regex>

#include "project/cpp_tokens.h"
#include "project/declared_names.h"

namespace Tests {
namespace {

using Tokens = std::vector<std::string>;

constexpr std::string_view kLibraryNamespace = "Zentara::Infrastructure::SpatialReference::";

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

} // namespace

Usage collectUsage(const std::vector<SourceFile>& sources)
{
    Usage usage;
    for (const SourceFile& source : sources)
        addUsage(usage, tokenize(source.text));
    return usage;
}

Names parsePlatformNames(std::string_view header)
{
    Names names;
    for (const std::string& name : parseDeclaredNames(header))
        names.insert(name.starts_with(kLibraryNamespace) ? name.substr(kLibraryNamespace.size()) : name);
    return names;
}

Names parseListedNames(std::string_view markdown, const std::string& header)
{
    static const std::regex row(R"(^\|([^|]*)\|.*)");
    static const std::regex name(R"(`([^`]+)`)");
    Names names;
    bool isInSection = false;
    for (const std::string& line : splitLines(markdown)) {
        if (line.starts_with("## "))
            isInSection = line.find("`" + header + "`") != std::string::npos;
        std::smatch match;
        if (!isInSection || !std::regex_match(line, match, row))
            continue;
        const std::string cell = match[1];
        for (std::sregex_iterator found(cell.begin(), cell.end(), name), end; found != end; ++found)
            names.insert((*found)[1]);
    }
    return names;
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
