#include "storage/run_length_calls.h"

#include <gtest/gtest.h>

#include "storage/run_length.h"

namespace Tests {
namespace {

Written callInto(PackingCall call, std::size_t capacity, const Bytes& input)
{
    Bytes output(capacity + kBorder, kUntouchedByte);
    const std::size_t length = call(input.data(), input.size(), output.data(), capacity);
    EXPECT_LE(length, capacity);
    EXPECT_EQ(Bytes(output.end() - kBorder, output.end()), Bytes(kBorder, kUntouchedByte)) << "written past the end";
    output.resize(length);
    return {length, output};
}

} // namespace

Written packInto(std::size_t capacity, const Bytes& input)
{
    return callInto(Orvel::PackRuns, capacity, input);
}

Written unpackInto(std::size_t capacity, const Bytes& input)
{
    return callInto(Orvel::UnpackRuns, capacity, input);
}

std::size_t packedSize(const Bytes& input)
{
    return Orvel::PackedSize(input.data(), input.size());
}

std::size_t unpackedSize(const Bytes& input)
{
    return Orvel::UnpackedSize(input.data(), input.size());
}

Bytes packed(const Bytes& input)
{
    const Written written = packInto(packedSize(input), input);
    EXPECT_EQ(written.length, packedSize(input));
    return written.bytes;
}

Bytes unpacked(const Bytes& input)
{
    const Written written = unpackInto(unpackedSize(input), input);
    EXPECT_EQ(written.length, unpackedSize(input));
    return written.bytes;
}

} // namespace Tests
