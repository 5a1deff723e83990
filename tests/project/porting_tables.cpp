#include "project/porting_tables.h"

#include <cstddef>
#include <regex>

namespace Tests {
namespace {

constexpr std::string_view kEndMark = "<!-- end -->\n";

std::string startMark(const std::string& header)
{
    return "<!-- made of examples/port/platform/" + header + " -->\n";
}

/// A number that a product may choose is not shown, nor a base that is not part of the interface.
std::string formatDeclaration(const Declaration& declaration)
{
    static const std::regex value(R"( = .*)");
    static const std::regex privateBase(R"(,? (:)? ?private [\w:]+)");
    const bool isConstant = !declaration.isFunction && !declaration.text.starts_with("using");
    const bool isFixed = declaration.comment.find("The number is fixed") != std::string::npos;
    const std::string text =
        isConstant && !isFixed ? std::regex_replace(declaration.text, value, "") : declaration.text;
    return declaration.text.starts_with("class") ? std::regex_replace(text, privateBase, "") : text;
}

/// Behind the mark; npos without it.
std::size_t findStart(std::string_view page, const std::string& header)
{
    const std::string mark = startMark(header);
    const std::size_t at = page.find(mark);
    return at == std::string_view::npos ? at : at + mark.size();
}

} // namespace

std::string formatPortingTables(const std::vector<Declaration>& declarations)
{
    std::string tables;
    std::string section = "none yet";
    for (const Declaration& declaration : declarations) {
        if (declaration.comment.empty())
            continue;
        if (declaration.section != section) {
            section = declaration.section;
            tables += (tables.empty() ? "" : "\n") + (section.empty() ? "" : "### " + section + "\n\n") +
                      "| name | declaration | what is expected |\n|---|---|---|\n";
        }
        tables +=
            "| `" + declaration.name + "` | `" + formatDeclaration(declaration) + "` | " + declaration.comment + " |\n";
    }
    return tables;
}

std::string findPortingTables(std::string_view page, const std::string& header)
{
    const std::size_t start = findStart(page, header);
    if (start == std::string_view::npos)
        return {};
    return std::string(page.substr(start, page.find(kEndMark, start) - start));
}

std::string replacePortingTables(const std::string& page, const std::string& header, const std::string& tables)
{
    const std::size_t start = findStart(page, header);
    if (start == std::string::npos)
        return page;
    return page.substr(0, start) + tables + page.substr(page.find(kEndMark, start));
}

} // namespace Tests
