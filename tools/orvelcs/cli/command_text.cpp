#include "orvelcs/cli/command_text.h"

#include <map>

namespace Orvelcs {

CommandText& textOf(const CLI::App& command)
{
    static std::map<const CLI::App*, CommandText> texts;
    return texts[&command];
}

ValueText& textOf(const CLI::Option& option)
{
    static std::map<const CLI::Option*, ValueText> texts;
    return texts[&option];
}

} // namespace Orvelcs
