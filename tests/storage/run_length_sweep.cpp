#include "storage/run_length_sweep.h"

#include <algorithm>
#include <cstring>

#include "storage/byte_patterns.h"
#include "storage/reference_run_length.h"
#include "storage/run_length.h"
#include "storage/run_length_calls.h"

namespace Tests {
namespace {

/// One output for all calls. The bytes after the capacity never change, so one buffer serves all of them.
class WatchedOutput {
public:
    /// Room for the given capacities, in ascending order.
    explicit WatchedOutput(std::size_t mostCapacity) : bytes_(mostCapacity + kBorder, kUntouchedByte) {}

    unsigned char* data() { return bytes_.data(); }
    bool isUntouchedAfter(std::size_t capacity) const
    {
        static const Bytes untouched(kBorder, kUntouchedByte);
        return std::memcmp(bytes_.data() + capacity, untouched.data(), kBorder) == 0;
    }
    bool beginsWith(const Bytes& expected) const
    {
        return expected.empty() || std::memcmp(bytes_.data(), expected.data(), expected.size()) == 0;
    }
    void clear(std::size_t capacity) { std::fill_n(bytes_.begin(), capacity, kUntouchedByte); }

private:
    Bytes bytes_;
};

/// Makes calls and counts them, up to the first wrong one.
class Sweep {
public:
    explicit Sweep(std::size_t mostOutput) : output_(mostOutput) {}

    bool agrees() const { return result_.disagreement.empty(); }
    const SweepResult& result() const { return result_; }
    void countInput() { ++result_.inputs; }

    /// `expected` is the output of the call when the capacity suffices. Empty when the call refuses the input.
    void call(PackingCall function, const Bytes& input, std::size_t capacity, const Bytes& expected)
    {
        const std::size_t length = function(input.data(), input.size(), output_.data(), capacity);
        ++result_.calls;
        const bool fits = !expected.empty() && expected.size() <= capacity;
        if (length != (fits ? expected.size() : 0) || (fits && !output_.beginsWith(expected)))
            disagree("another output", input, capacity);
        else if (!output_.isUntouchedAfter(capacity))
            disagree("written past the end", input, capacity);
    }
    void callWithEachCapacity(PackingCall function, const Bytes& input, std::size_t mostCapacity, const Bytes& expected)
    {
        for (std::size_t capacity = 0; capacity <= mostCapacity && agrees(); ++capacity)
            call(function, input, capacity, expected);
        output_.clear(mostCapacity);
    }
    void compareSize(std::size_t actual, std::size_t expected, const Bytes& input)
    {
        ++result_.calls;
        if (actual != expected)
            disagree("another size", input, 0);
    }

    void packAndUnpack(const Bytes& unpacked, bool withEachCapacity);

private:
    void disagree(const std::string& what, const Bytes& input, std::size_t capacity)
    {
        if (agrees())
            result_.disagreement = what + ", capacity " + std::to_string(capacity) + ", input " + toHex(input);
    }

    WatchedOutput output_;
    SweepResult result_;
};

void Sweep::packAndUnpack(const Bytes& unpacked, bool withEachCapacity)
{
    countInput();
    const Bytes packed = referencePacked(unpacked);
    compareSize(Orvel::PackedSize(unpacked.data(), unpacked.size()), packed.size(), unpacked);
    compareSize(Orvel::UnpackedSize(packed.data(), packed.size()), unpacked.size(), packed);
    if (withEachCapacity) {
        callWithEachCapacity(Orvel::PackRuns, unpacked, packed.size(), packed);
        callWithEachCapacity(Orvel::UnpackRuns, packed, unpacked.size(), unpacked);
        return;
    }
    call(Orvel::PackRuns, unpacked, packed.size() - 1, packed);
    call(Orvel::PackRuns, unpacked, packed.size(), packed);
    output_.clear(packed.size());
    call(Orvel::UnpackRuns, packed, unpacked.size() - 1, unpacked);
    call(Orvel::UnpackRuns, packed, unpacked.size(), unpacked);
    output_.clear(unpacked.size());
}

std::uint64_t power(std::uint64_t base, std::size_t exponent)
{
    return exponent == 0 ? 1 : base * power(base, exponent - 1);
}

/// The digits of the number to that base, the lowest first.
void setDigits(Bytes& bytes, std::uint64_t number, std::uint64_t base)
{
    for (unsigned char& byte : bytes) {
        byte = static_cast<unsigned char>(number % base);
        number /= base;
    }
}

/// A run or a literal that begins with the byte.
Bytes stretch(bool isRun, std::size_t length, unsigned char first)
{
    return isRun ? repeated(first, length) : distinct(length, first);
}

void sweepPair(Sweep& sweep, std::size_t first, std::size_t second)
{
    for (unsigned shape = 0; shape < 8 && sweep.agrees(); ++shape) {
        const Bytes before = stretch((shape & 1) != 0, first, 0x40);
        const auto next = static_cast<unsigned char>(before.back() + ((shape & 2) != 0 ? 1 : 0));
        sweep.packAndUnpack(joined({before, stretch((shape & 4) != 0, second, next)}), false);
    }
}

} // namespace

SweepResult sweepUnpacking(std::size_t length, std::size_t mostCapacity, std::uint64_t stride)
{
    Sweep sweep(mostCapacity);
    Bytes input(length);
    for (std::uint64_t number = 0; number < power(256, length) && sweep.agrees(); number += stride) {
        setDigits(input, number, 256);
        sweep.countInput();
        const Bytes expected = referenceUnpacked(input).value_or(Bytes());
        sweep.compareSize(Orvel::UnpackedSize(input.data(), input.size()), expected.size(), input);
        sweep.callWithEachCapacity(Orvel::UnpackRuns, input, mostCapacity, expected);
    }
    return sweep.result();
}

SweepResult sweepPacking(std::size_t length, std::size_t symbols, std::uint64_t stride)
{
    Sweep sweep(2 * length + 2);
    Bytes input(length);
    for (std::uint64_t number = 0; number < power(symbols, length) && sweep.agrees(); number += stride) {
        setDigits(input, number, symbols);
        sweep.packAndUnpack(input, true);
    }
    return sweep.result();
}

SweepResult sweepAlternations(std::size_t longest, std::uint64_t stride)
{
    Sweep sweep(3 * longest);
    const std::uint64_t pairs = std::uint64_t{longest} * longest;
    for (std::uint64_t pair = 0; pair < pairs && sweep.agrees(); pair += stride)
        sweepPair(sweep, 1 + pair % longest, 1 + pair / longest);
    return sweep.result();
}

} // namespace Tests
