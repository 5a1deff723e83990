#include "module/published_names.h"

#include <cxxabi.h>

#include <cstdlib>
#include <fstream>
#include <memory>

namespace Tests {
namespace {

struct FreeText {
    void operator()(char* text) const { std::free(text); }
};

} // namespace

Names readNames(const std::string& file)
{
    std::ifstream lines(std::string(ORVEL_SOURCE_DIR "/tests/module/") + file);
    Names names;
    for (std::string line; std::getline(lines, line);)
        names.insert(line);
    return names;
}

std::string missingNames(const Names& first, const Names& second)
{
    std::string lines;
    for (const std::string& name : first) {
        if (!second.contains(name))
            lines += name + '\n';
    }
    return lines;
}

std::string demangle(const std::string& name)
{
    int status = 0;
    const std::unique_ptr<char, FreeText> text(abi::__cxa_demangle(name.c_str(), nullptr, nullptr, &status));
    return status == 0 ? text.get() : name;
}

} // namespace Tests
