// The manual page of the program, for man.
#pragma once

#include <string>

#include "orvelcs/cli/command_table.h"

namespace Orvelcs {

std::string manualPage(const CommandTable& table);

} // namespace Orvelcs
