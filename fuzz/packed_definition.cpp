#include "storage/packed_definition.h"

#include "fuzz/definition_round_trip.h"
#include "fuzz/oracle.h"
#include "fuzz/packed_form.h"
#include "fuzz/targets.h"

namespace Fuzz {

void packedDefinition(Input input)
{
    const LeakCheck guard;
    const DefinitionHolder definition = Orvel::DecodeDefinitionBytes(input.data(), input.size());
    if (!definition)
        return;
    require(unpackStream(Bytes(input.begin(), input.end())).has_value(),
            "a definition is below a class identifier of its own");
    requirePackedRoundTrip(*definition.get());
}

} // namespace Fuzz
