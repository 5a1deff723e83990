// The JSON Schemas of what the commands print with --json. CMake makes their texts from docs/schema.
#pragma once

#include <span>
#include <string_view>

#include "orvelcs/cli/json.h"

namespace Orvelcs {

struct Schema {
    std::string_view name; // of its file, without ".json": the words of the command with hyphens between them
    std::string_view text;
};

/// All of them in the order of their names.
std::span<const Schema> schemas();

/// The schema with the definitions of error.json that it refers to, so that it can be used without that file.
Json selfContained(const Schema& schema);

} // namespace Orvelcs
