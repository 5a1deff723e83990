#include "fuzz/targets.h"

#include <algorithm>
#include <array>

#include "fuzz/oracle.h"

namespace Fuzz {
namespace {

constexpr std::array kTargets{
    Target{"unpack", unpack},
    Target{"pack", pack},
    Target{"packed_definition", packedDefinition},
    Target{"definition_stream", definitionStream},
    Target{"serialized_block", serializedBlock},
    Target{"definition_xrecord", definitionXrecord},
    Target{"item_text", itemText},
    Target{"collection_text", collectionText},
    Target{"settings_file", settingsFile},
    Target{"drawing_rows", drawingRows},
    Target{"drawing_check", drawingCheck},
    Target{"drawing_file", drawingFile},
    Target{"operations", operations},
};

} // namespace

std::span<const Target> targets()
{
    return kTargets;
}

const Target& findTarget(std::string_view name)
{
    const auto* const target = std::ranges::find(kTargets, name, &Target::name);
    require(target != kTargets.end(), "there is a target of that name");
    return *target;
}

} // namespace Fuzz
