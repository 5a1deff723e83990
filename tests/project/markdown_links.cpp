#include "project/markdown_links.h"

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

bool isOutsideTheRepository(const std::string& target)
{
    static const std::regex scheme(R"(^([a-zA-Z][a-zA-Z0-9+.-]*:|#|//).*)");
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
        const fs::path file =
            (fs::path(page.path).parent_path() / target.substr(0, target.find('#'))).lexically_normal();
        if (!isInside(file) || !fs::exists(root / file))
            complaints.push_back(page.path + ": " + target + " leads to no file");
    }
    return complaints;
}

} // namespace Tests
