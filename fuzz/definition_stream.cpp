#include "fuzz/byte_source.h"
#include "fuzz/definition_round_trip.h"
#include "fuzz/oracle.h"
#include "fuzz/packed_form.h"
#include "fuzz/targets.h"
#include "storage/packed_definition.h"

namespace Fuzz {

void definitionStream(Input input)
{
    const LeakCheck guard;
    ByteSource source(input);
    const std::size_t kind = source.below(kDefinitionKinds);
    const Bytes packed = packStream(kind, source.rest());
    const DefinitionHolder definition = Orvel::DecodeDefinitionBytes(packed.data(), packed.size());
    if (definition)
        requirePackedRoundTrip(*definition.get());
}

} // namespace Fuzz
