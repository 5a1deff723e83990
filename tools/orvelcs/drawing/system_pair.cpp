#include "orvelcs/drawing/system_pair.h"

#include "orvelcs/drawing/configured_transformation.h"

namespace Orvelcs {

SystemPair readPair(const std::string& source, const std::string& target, const Output& output, ExitStatus unknownCode)
{
    if (!namesFile(source) && !namesFile(target))
        return {codeArgument("SRC", source), codeArgument("DST", target)};
    if (namesStandardInput(source) && namesStandardInput(target))
        throw wrongUsage("@-", "standard input cannot be both systems");
    NamedSystem from = readSystem("SRC", source, output, unknownCode);
    NamedSystem to = readSystem("DST", target, output, unknownCode);
    return {from.code, to.code, std::pair(std::move(from), std::move(to))};
}

std::optional<Embedded::ConfiguredOperation>
configuredBetween(const SystemPair& pair, const std::optional<std::string>& drawing, const Output& output)
{
    if (pair.sourceCode.empty() || pair.targetCode.empty())
        return std::nullopt;
    return configuredTransformation(pair.sourceCode, pair.targetCode, drawing, output);
}

Embedded::Expected<std::unique_ptr<Embedded::CoordinateTransformer>>
transformerBetween(const SystemPair& pair, const std::optional<Embedded::ConfiguredOperation>& configured)
{
    if (!pair.definitions)
        return Embedded::makeTransformer(pair.sourceCode, pair.targetCode, configured);
    const auto& [source, target] = *pair.definitions;
    return Embedded::makeTransformer(*source.definition, *target.definition, configured);
}

Embedded::Expected<std::vector<Embedded::CatalogOperation>> operationsBetween(const SystemPair& pair)
{
    if (!pair.definitions)
        return Embedded::operationsBetween(pair.sourceCode, pair.targetCode);
    const auto& [source, target] = *pair.definitions;
    return Embedded::operationsBetween(*source.definition, *target.definition);
}

} // namespace Orvelcs
