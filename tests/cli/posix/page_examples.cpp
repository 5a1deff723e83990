#include "cli/posix/page_examples.h"

#include <cstdlib>
#include <filesystem>
#include <sstream>

#include "support/file_text.h"

namespace Tests {

std::vector<std::string> pageExamples(const std::string& page, const std::string& heading)
{
    std::istringstream lines(readFile(std::filesystem::path(ORVEL_SOURCE_DIR) / "docs" / page));
    std::vector<std::string> blocks;
    bool isBelow = false;
    bool isCode = false;
    for (std::string line; std::getline(lines, line);) {
        if (!isCode && line.starts_with("## "))
            isBelow = line == "## " + heading;
        else if (!isCode && line == "```sh") {
            isCode = true;
            blocks.emplace_back();
        } else if (isCode && line == "```") {
            isCode = false;
            if (!isBelow)
                blocks.pop_back();
        } else if (isCode)
            blocks.back() += line + "\n";
    }
    return blocks;
}

ProgramRun exampleRun(const std::string& script)
{
    const char* const folders = std::getenv("PATH");
    ProgramRun shell;
    shell.program = "/bin/sh";
    shell.arguments = {"-c", script};
    shell.environment = {{"PATH", std::filesystem::path(ORVELCS_PROGRAM).parent_path().string() + ":" +
                                      (folders != nullptr ? folders : "/usr/bin:/bin")}};
    return shell;
}

} // namespace Tests
