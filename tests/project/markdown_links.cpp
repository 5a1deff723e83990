#include "project/markdown_links.h"

#include <cctype>
#include <regex>

namespace Tests {
namespace {

namespace fs = std::filesystem;

std::string removeCode(std::string_view markdown)
{
    static const std::regex span(R"(`[^`]*`)");
    std::string text;
    bool isInCodeBlock = false;
    for (const std::string& line : splitLines(markdown)) {
        if (line.find_first_not_of(' ') != std::string::npos &&
            line.substr(line.find_first_not_of(' ')).starts_with("```"))
            isInCodeBlock = !isInCodeBlock;
        else if (!isInCodeBlock)
            text += std::regex_replace(line, span, "code") + "\n";
    }
    return text;
}

/// The anchor of a heading, as the sites that show such pages make it: lower case, hyphens for spaces, no punctuation.
std::string anchorOf(std::string_view heading)
{
    std::string anchor;
    for (const char c : heading) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == ' ' || c == '-')
            anchor += '-';
        else if (byte >= 0x80 || std::isalnum(byte) != 0 || c == '_')
            anchor += static_cast<char>(std::tolower(byte));
    }
    return anchor;
}

bool hasAnchor(std::string_view markdown, const std::string& anchor)
{
    static const std::regex heading(R"(#+ +(.*\S)\s*)");
    bool isInCodeBlock = false;
    for (const std::string& line : splitLines(markdown)) {
        std::smatch match;
        if (line.starts_with("```"))
            isInCodeBlock = !isInCodeBlock;
        else if (!isInCodeBlock && std::regex_match(line, match, heading) && anchorOf(match[1].str()) == anchor)
            return true;
    }
    return false;
}

bool isOutsideTheRepository(const std::string& target)
{
    static const std::regex scheme(R"(^([a-zA-Z][a-zA-Z0-9+.-]*:|//).*)");
    return std::regex_match(target, scheme);
}

bool isInside(const fs::path& path)
{
    return path.root_path().empty() && *path.begin() != "..";
}

} // namespace

std::vector<std::string> findLinks(std::string_view markdown)
{
    // [text](target), [text](<target>), [text](target "title"), and [label]: target at a line's start.
    static const std::regex link(R"(\]\(\s*<?([^)\s>]+)|(?:^|\n)\[[^\]\n]+\]:\s*<?([^\s>]+))");
    const std::string text = removeCode(markdown);
    std::vector<std::string> targets;
    for (std::sregex_iterator match(text.begin(), text.end(), link), end; match != end; ++match)
        targets.push_back((*match)[1].matched ? (*match)[1] : (*match)[2]);
    return targets;
}

std::vector<std::string> findBrokenLinks(const fs::path& root, const SourceFile& page)
{
    std::vector<std::string> complaints;
    for (const std::string& target : findLinks(page.text)) {
        if (isOutsideTheRepository(target))
            continue;
        const std::string place = target.substr(0, target.find('#'));
        const fs::path file =
            place.empty() ? fs::path(page.path) : (fs::path(page.path).parent_path() / place).lexically_normal();
        if (!place.empty() && (!isInside(file) || !fs::exists(root / file))) {
            complaints.push_back(page.path + ": " + target + " leads to no file");
            continue;
        }
        const bool isPage = file.extension() == ".md" && place.size() < target.size();
        if (isPage && !hasAnchor(place.empty() ? page.text : readFile(root, file.generic_string()).text,
                                 target.substr(place.size() + 1)))
            complaints.push_back(page.path + ": " + target + " leads to no heading");
    }
    return complaints;
}

} // namespace Tests
