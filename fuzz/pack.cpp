#include "fuzz/byte_source.h"
#include "fuzz/oracle.h"
#include "fuzz/packing_call.h"
#include "fuzz/targets.h"
#include "storage/reference_run_length.h"
#include "storage/run_length.h"

namespace Fuzz {
namespace {

constexpr std::size_t kMaximumRepeated = 700; // the length of several packets

/// Takes the bytes as they are, or as pairs of a byte and a repeat count, since a fuzzer rarely makes long runs.
Bytes makeUnpackedBytes(Input input)
{
    ByteSource source(input);
    const bool isPairs = source.below(2) == 1;
    Bytes bytes;
    while (isPairs && !source.isEmpty() && bytes.size() < kMaximumRepeated) {
        const std::uint8_t byte = source.byte();
        bytes.insert(bytes.end(), source.byte() + std::size_t{1}, byte);
    }
    const Input rest = source.rest();
    bytes.insert(bytes.end(), rest.begin(), rest.end());
    return bytes;
}

} // namespace

void pack(Input input)
{
    const Bytes bytes = makeUnpackedBytes(input);
    const Bytes expected = Tests::referencePacked(bytes);
    const std::size_t size = Orvel::PackedSize(bytes.data(), bytes.size());
    require(size == expected.size(), "the size is that of the packed bytes");
    require(checkedPackingCall(Orvel::PackRuns, bytes, size) == expected, "the bytes are those of the second packer");
    if (bytes.empty())
        return;
    require(checkedPackingCall(Orvel::PackRuns, bytes, size - 1).empty(), "one byte less of room is refused");
    require(Orvel::RunLength(bytes.data(), bytes.data() + bytes.size()) == Tests::referenceRunLength(bytes, 0),
            "the first run is as long as the second packer finds it");
    require(checkedPackingCall(Orvel::UnpackRuns, expected, bytes.size()) == bytes,
            "unpacking gives back what was packed");
}

} // namespace Fuzz
