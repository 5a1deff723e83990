#include "fuzz/oracle.h"
#include "fuzz/packing_call.h"
#include "fuzz/targets.h"
#include "storage/reference_run_length.h"
#include "storage/run_length.h"

namespace Fuzz {

void unpack(Input input)
{
    const Bytes expected = Tests::referenceUnpacked(Bytes(input.begin(), input.end())).value_or(Bytes());
    const std::size_t size = Orvel::UnpackedSize(input.data(), input.size());
    require(size == expected.size(), "the size is that of the bytes, and 0 for malformed ones");
    require(checkedPackingCall(Orvel::UnpackRuns, input, size) == expected,
            "the bytes are those of the second unpacker");
    require(checkedPackingCall(Orvel::UnpackRuns, input, size + 1) == expected, "room to spare changes nothing");
    if (size > 0)
        require(checkedPackingCall(Orvel::UnpackRuns, input, size - 1).empty(), "one byte less of room is refused");
}

} // namespace Fuzz
