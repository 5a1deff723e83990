#include "project/operating_system_conditions.h"

#include <regex>
#include <string>

#include "project/source_tree.h"

namespace Tests {
namespace {

bool isCondition(const std::string& line)
{
    static const std::regex condition(R"(^\s*#\s*(if|ifdef|ifndef|elif|elifdef|elifndef)\b.*)");
    return std::regex_match(line, condition);
}

bool namesAnOperatingSystem(const std::string& directive)
{
    static const std::regex name(
        R"(\b(_?WIN32|_WIN64|_?WINDOWS|__MINGW32__|__MINGW64__|__CYGWIN__|(__)?linux(__)?|(__)?unix(__)?|__APPLE__|__MACH__|__FreeBSD__|__ANDROID__)\b|<(windows|unistd)\.h>)");
    return std::regex_search(directive, name);
}

} // namespace

std::vector<std::size_t> findOperatingSystemConditions(std::string_view text)
{
    std::vector<std::size_t> numbers;
    const std::vector<std::string> lines = splitLines(text);
    for (std::size_t index = 0; index < lines.size(); ++index) {
        const std::size_t number = index + 1;
        std::string directive = lines[index];
        while (directive.ends_with('\\') && index + 1 < lines.size())
            directive.replace(directive.size() - 1, 1, lines[++index]);
        if (isCondition(directive) && namesAnOperatingSystem(directive))
            numbers.push_back(number);
    }
    return numbers;
}

} // namespace Tests
