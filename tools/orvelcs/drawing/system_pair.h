// SRC and DST on the command line: two systems with operations between them.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "embedded/spatial_reference/operations/coordinate_transformer.h"
#include "orvelcs/drawing/system_argument.h"

namespace Orvelcs {

struct SystemPair {
    std::wstring sourceCode; // empty for a text that gives its system no identifier
    std::wstring targetCode;
    /// The source and the target; nothing when both are codes of the catalog, which are looked up when they are used.
    std::optional<std::pair<NamedSystem, NamedSystem>> definitions{};
};

/// Throws Failure as readSystem does, and for standard input where it stands for both.
SystemPair readPair(const std::string& source, const std::string& target, const Output& output, ExitStatus unknownCode);

/// The transformation that is configured between the codes of the two; nothing where one of them has no code.
std::optional<Embedded::ConfiguredOperation>
configuredBetween(const SystemPair& pair, const std::optional<std::string>& drawing, const Output& output);

Embedded::Expected<std::unique_ptr<Embedded::CoordinateTransformer>>
transformerBetween(const SystemPair& pair, const std::optional<Embedded::ConfiguredOperation>& configured);

Embedded::Expected<std::vector<Embedded::CatalogOperation>> operationsBetween(const SystemPair& pair);

} // namespace Orvelcs
