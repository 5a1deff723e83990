// The page on the command line, in Markdown.
#pragma once

#include <string>

#include "orvelcs/cli/command_table.h"

namespace Orvelcs {

std::string markdownPage(const CommandTable& table);

} // namespace Orvelcs
